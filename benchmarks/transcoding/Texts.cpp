// The texts that are converted: words of a script's letters, or the content of files.
#include <iconv.h>

#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <Lum/Transcoder.h>

#include "transcoding/TranscodingFamily.h"

namespace Bench::Transcoding {
namespace {

constexpr std::size_t kBuiltInSize = 100000;

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

std::vector<std::string> Characters(std::string_view text) {
    std::vector<std::string> characters;
    while (!text.empty()) {
        std::size_t size = 1;
        while (size < text.size() && IsContinuation(text[size])) {
            ++size;
        }
        characters.emplace_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return characters;
}

/// How a script's texts are made up: from letters in the frequency in which they stand here.
struct Recipe {
    const char* name;
    const char* file;  ///< "" for a text that no file has.
    const char* letters;
    unsigned longestWord;
    const char* space;
    const char* stop;
    std::vector<std::string> encodings;
};

const std::vector<Recipe>& Recipes() {
    static const std::vector<Recipe> recipes{
        {"ascii", "", "eeeeeetttttaaaaaooooiiinnnssshhhrrrdddlluucmfwypvbgkjqxzETAOI0123", 11, " ", ". ", {}},
        {"latin",
         "latin",
         "eeeeeettttaaaaooooiiinnnssshhrrrddlluucmfpvbgqéèàüöäßçñ",
         11,
         " ",
         ", ",
         {"windows-1252", "macintosh"}},
        {"cyrillic",
         "russian",
         "оооооееееааааиииннттссррввллккммддппууяыьгзбчйхжшюцщэф",
         11,
         " ",
         ". ",
         {"windows-1251", "koi8-r"}},
        {"arabic", "arabic", "اااااللللييممووننررتتبعدهسفقكحجشصطخذضغثظزةى", 8, " ", "، ", {}},
        {"japanese",
         "japanese",
         "のにはをたがでてとしれさあいうえおかきくけこまみめもらりるアイウエオカスタナリンー日本語一人年大十二中長出三"
         "時行",
         23,
         "、",
         "。",
         {"shift_jis", "euc-jp", "iso-2022-jp"}},
        {"chinese",
         "chinese",
         "的一是不了在人有我他这个们中来上大为和国地到以说时要就出会可也你对生能而子那得于着下自之年",
         17,
         "，",
         "。",
         {"gb18030"}},
        {"emoji",
         "emoji",
         "😀😁😂🤣😃😄😅😆😉😊😋😎😍😘🥰😗😙🚀🌍🎉🐱🐶🍕🍎⚽🏀🎸"
         "🎹"
         "📷"
         "💡",
         30,
         " ",
         " ",
         {}},
    };
    return recipes;
}

std::string MadeUp(const Recipe& recipe) {
    const std::vector<std::string> letters = Characters(recipe.letters);
    std::mt19937 random(1);
    std::string text;
    while (text.size() < kBuiltInSize) {
        for (std::size_t left = random() % recipe.longestWord + 1; left > 0; --left) {
            text += letters[random() % letters.size()];
        }
        text += random() % 8 == 0 ? recipe.stop : recipe.space;
    }
    return text;
}

std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    if (!file || content.view().empty()) {
        throw std::runtime_error("no text can be read from " + path);
    }
    return content.str();
}

/// One character after the other through iconv, which every system has.
class Encoder {
public:
    explicit Encoder(const std::string& encoding) : m_Converter(iconv_open(encoding.c_str(), "utf-8")) {}
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;
    ~Encoder() { iconv_close(m_Converter); }

    /// The bytes of a character by itself; "" if it has none.
    [[nodiscard]] std::string Encode(std::string character) const {
        std::array<char, 32> bytes{};
        char* from = character.data();
        std::size_t size = character.size();
        char* to = bytes.data();
        std::size_t room = bytes.size();
        const bool isDone = iconv(m_Converter, &from, &size, &to, &room) == 0;
        iconv(m_Converter, nullptr, nullptr, &to, &room);
        return isDone ? std::string(bytes.data(), to) : std::string();
    }

private:
    iconv_t m_Converter;
};

}  // namespace

std::vector<Script> Scripts(const std::string& folder) {
    std::vector<Script> scripts;
    for (const Recipe& recipe : Recipes()) {
        const bool isRead = !folder.empty() && *recipe.file != '\0';
        scripts.push_back({recipe.name,
                           isRead ? ContentOf(folder + "/text-" + recipe.file + ".utf8.txt") : MadeUp(recipe),
                           recipe.encodings});
    }
    return scripts;
}

std::vector<std::string> Slices(const std::string& text, std::size_t size, std::size_t count) {
    std::string endless = text;
    while (endless.size() < text.size() + size + 8) {
        endless += text;
    }
    std::vector<std::string> slices;
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t first = i * text.size() / count;
        std::size_t last = first + size;
        while (IsContinuation(endless[first])) {
            ++first;
        }
        while (IsContinuation(endless[last])) {
            --last;
        }
        slices.push_back(endless.substr(first, last - first));
    }
    return slices;
}

std::u16string Widened(const std::string& utf8) {
    std::u16string wide;
    for (const std::string& character : Characters(utf8)) {
        const auto bits = [&](std::size_t i) { return static_cast<unsigned char>(character[i]) & 0x3FU; };
        const auto lead = static_cast<unsigned char>(character[0]);
        switch (character.size()) {
            case 1:
                wide += static_cast<char16_t>(lead);
                break;
            case 2:
                wide += static_cast<char16_t>((lead & 0x1FU) << 6 | bits(1));
                break;
            case 3:
                wide += static_cast<char16_t>((lead & 0x0FU) << 12 | bits(1) << 6 | bits(2));
                break;
            default: {
                const std::uint32_t scalar = (lead & 0x07U) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3);
                wide += static_cast<char16_t>(0xD7C0 + (scalar >> 10));
                wide += static_cast<char16_t>(0xDC00 | (scalar & 0x3FF));
            }
        }
    }
    return wide;
}

EncodingCase Encoded(const std::string& encoding, const std::string& script, const std::string& utf8) {
    const Encoder encoder(encoding);
    std::string kept;
    for (const std::string& character : Characters(utf8)) {
        const std::string bytes = encoder.Encode(character);
        if (!bytes.empty() && bytes == Lum::Transcoder::UTF8ToEncoding(character, encoding) &&
            Lum::Transcoder::EncodingToUTF8(bytes, encoding) == character) {
            kept += character;
        }
    }
    const std::string name = "transcoding/" + script + ' ' + encoding;
    EncodingCase made{name + " to UTF-16", name + " from UTF-16", encoding, {}, {}};
    for (const std::string& slice : Slices(kept, 100000, 4)) {
        made.narrow.push_back(Lum::Transcoder::UTF8ToEncoding(slice, encoding));
        made.wide.push_back(Widened(slice));
    }
    return made;
}

}  // namespace Bench::Transcoding
