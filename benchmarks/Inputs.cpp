// The texts that cases work on.
#include "Inputs.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace Bench {
namespace {

constexpr char kFiller = 'x';

constexpr std::string_view kProse =
    "The ferry to Tromsø leaves at 7:45; tickets (adult 320 kr, child 160 kr) are sold on board & at the pier. "
    "Ask for <window seats> early, they go first! Été comme hiver, la traversée dure 3 heures environ: prévoyez un "
    "manteau. More at harbour@ferry.example/timetable?season=winter#fares [in 4 languages]. Die Rückfahrt kostet 10% "
    "weniger, wenn man sie gleich mitbucht. \"Двери закрываются\" means the doors are closing. ";

constexpr std::string_view kCleanAlphabet =
    "abcdefghijklmnopqrstuvwxyz-0123456789.ABCDEFGHIJKLMNOPQRSTUVWXYZ_etaoinshrdlu~";

bool IsUnreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
           c == '_' || c == '~';
}

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// `size` bytes of `text`, which goes on at its start where it ends, from `start` on.
std::string Turn(std::string_view text, std::size_t start, std::size_t size) {
    std::string turned;
    turned.reserve(size);
    while (turned.size() < size) {
        const std::string_view rest = text.substr((start + turned.size()) % text.size());
        turned.append(rest.substr(0, size - turned.size()));
    }
    return turned;
}

}  // namespace

std::vector<std::string> Lines(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (!line.empty()) {
            lines.emplace_back(line);
        }
    }
    return lines;
}

std::vector<std::string> LinesOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    std::vector<std::string> lines = file ? Lines(content.view()) : std::vector<std::string>{};
    if (lines.empty()) {
        throw std::runtime_error("no lines can be read from " + path);
    }
    return lines;
}

std::vector<std::string> MixedTexts(std::size_t count, std::size_t size) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t start = i * kProse.size() / count;
        while (IsContinuation(kProse[start])) {
            ++start;
        }
        std::string text = Turn(kProse, start, size + 1);
        // The byte too many tells whether the cut divides a character.
        std::size_t end = size;
        while (IsContinuation(text[end])) {
            --end;
        }
        text.resize(end);
        text.resize(size, kFiller);
        texts.push_back(std::move(text));
    }
    return texts;
}

std::vector<std::string> CleanTexts(std::size_t count, std::size_t size) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i) {
        texts.push_back(Turn(kCleanAlphabet, i * 7 % kCleanAlphabet.size(), size));
    }
    return texts;
}

std::vector<std::string> ShortTexts() {
    constexpr std::array<std::string_view, 8> first{"north",  "annual", "winter", "quiet",
                                                    "copper", "river",  "second", "green"};
    constexpr std::array<std::string_view, 8> second{"report", "harbor", "house", "garden",
                                                     "notes",  "market", "field", "letter"};
    std::vector<std::string> texts;
    for (const std::string_view a : first) {
        for (const std::string_view b : second) {
            texts.push_back(std::string(a) + ' ' + std::string(b));
        }
    }
    return texts;
}

std::string Escaped(std::string_view text, std::size_t size) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const std::size_t length = IsUnreserved(c) ? 1 : 3;
        if (escaped.size() + length > size) {
            escaped.resize(size, kFiller);
            break;
        }
        if (length == 1) {
            escaped += c;
        } else {
            escaped += {'%', digits[byte / 16], digits[byte % 16]};
        }
    }
    return escaped;
}

}  // namespace Bench
