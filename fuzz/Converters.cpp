// Property: between any two encodings, a text that is converted in blocks of any size into outputs of any size
// gives the same text, status and position as the whole text at once, by a StreamConverter and by ConvertText.
// Every call makes progress. The result of a conversion without a fault can be converted again, and to UTF-16
// it gives the text that it was made from, if that was UTF-16. What becomes UTF-16 is what ICU makes of it and, where
// the tables of both agree, iconv. A conversion that replaces what is bad gives the same text in blocks, which is well
// formed; from UTF-8, what the Unicode standard's table of well-formed bytes says.
#include <iconv.h>
#include <unicode/ucnv.h>

#include <algorithm>
#include <bit>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/LossyConversion.h>
#include <Lum/Transcoder.h>

#include "fuzz/Fuzz.h"
#include "tests/Generated.h"

namespace {

using Generated::Exact;
using Lum::ConversionResult;
using Lum::ConversionStatus;

struct Converted {
    ConversionStatus status;
    std::size_t read;
    std::string text;

    bool operator==(const Converted& other) const = default;
};

/// Each call gets `nextBlock()` more bytes of input than the last one, and an output of `nextSpace()` bytes.
template <class NextBlock, class NextSpace>
Converted Convert(Lum::StreamConverter& converter, std::string_view text, const NextBlock& nextBlock,
                  const NextSpace& nextSpace) {
    Converted result{ConversionStatus::kDone, 0, {}};
    const auto take = [&](std::string_view output, const ConversionResult& step) {
        Require(step.written <= output.size());
        result.text.append(output.substr(0, step.written));
        result.status = step.status;
    };
    for (std::size_t shown = 0;;) {
        const Exact input(text.substr(result.read, shown - result.read)), output(std::string(nextSpace(), '?'));
        const ConversionResult step = converter.Convert(input.View(), {output.begin(), output.size()});
        Require(step.read <= input.size());
        take(output.View(), step);
        result.read += step.read;
        if (step.status == ConversionStatus::kOutputFull) {
            Require(step.written != 0 || output.size() < 16);
        } else if (step.status == ConversionStatus::kDone || step.status == ConversionStatus::kIncomplete) {
            Require(step.status == ConversionStatus::kIncomplete || step.read == input.size());
            if (shown == text.size()) {
                break;
            }
            shown = std::min(text.size(), shown + nextBlock());
        } else {
            return result;
        }
    }
    if (result.status == ConversionStatus::kDone) {
        do {
            const Exact output(std::string(nextSpace(), '?'));
            take(output.View(), converter.Finish({output.begin(), output.size()}));
        } while (result.status == ConversionStatus::kOutputFull);
    }
    return result;
}

/// The text as UTF-16, or nothing where it is refused.
std::optional<std::string> ByIcu(UConverter* icu, std::string_view text) {
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setToUCallBack(icu, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    std::u16string units(2 * text.size() + 8, u'\0');
    const auto size = ucnv_toUChars(icu, units.data(), static_cast<int>(units.size()), text.data(),
                                    static_cast<int>(text.size()), &error);
    const auto bytes = std::string_view(reinterpret_cast<const char*>(units.data()), 2 * units.size());
    return U_FAILURE(error) ? std::nullopt
                            : std::optional<std::string>(bytes.substr(0, 2 * static_cast<std::size_t>(size)));
}
std::optional<std::string> ByIconv(const std::string& from, std::string text) {
    const iconv_t iconv =
        iconv_open(std::endian::native == std::endian::little ? "utf-16le" : "utf-16be", from.c_str());
    std::string result(4 * text.size() + 8, '\0');
    char *input = text.data(), *output = result.data();
    std::size_t left = text.size(), space = result.size();
    const bool isDone = ::iconv(iconv, &input, &left, &output, &space) != static_cast<std::size_t>(-1);
    iconv_close(iconv);
    result.resize(result.size() - space);
    return isDone ? std::optional(result) : std::nullopt;
}

void RequireThatOthersAgree(const std::string& from, std::string_view text, const Converted& whole) {
    const auto result = whole.status == ConversionStatus::kDone ? std::optional(whole.text) : std::nullopt;
    UErrorCode error = U_ZERO_ERROR;
    UConverter* const icu = ucnv_open(from.c_str(), &error);
    if (U_SUCCESS(error) && from != "utf-32") {  // ICU drops its byte order mark.
        const auto byIcu = ByIcu(icu, text);
        // It refuses shift sequences without a character between them, drops what is incomplete at the end of HZ, and
        // accepts unpaired surrogates in UTF-7.
        const bool differ = from.starts_with("iso-2022-") || from == "hz-gb-2312" || from == "utf-7";
        Require(byIcu == result || (differ && (!byIcu || !result)));
    }
    ucnv_close(icu);
    if (from.starts_with("iso-8859-") || from.starts_with("koi8-") || from == "utf-8" || from == "windows-1256") {
        Require(ByIconv(from, std::string(text)) == result);
    }
}

/// UTF-8 with U+FFFD for each maximal subpart that is ill-formed: table 3-7 of the Unicode standard, byte by byte.
std::string WellFormed(std::string_view text) {
    std::string result;
    for (std::size_t i = 0, end = 0; i < text.size(); i = end) {
        const auto at = [&](std::size_t place) { return static_cast<unsigned char>(text[place]); };
        const unsigned first = at(i);
        const std::size_t size = first < 0x80 ? 1 : first - 0xC2 > 0x32 ? 0 : 2U + (first > 0xDF) + (first > 0xEF);
        unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
        unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
        for (end = i + 1; end < std::min(i + size, text.size()) && at(end) >= low && at(end) <= high; ++end) {
            low = 0x80, high = 0xBF;
        }
        result += end - i == size ? text.substr(i, size) : "\xEF\xBF\xBD";
    }
    return result;
}

/// In blocks of `nextBlock()` bytes and outputs of `nextSpace()`. The elements that are replaced are bad.
std::string ConvertLossy(const std::string& from, const std::string& to, std::string_view text, const auto& nextBlock,
                         const auto& nextSpace) {
    std::size_t last = 0, read = 0, shown = 0;
    std::string result;
    Lum::LossyConverter converter(from, to, [&](const Lum::BadElement& bad) {
        const auto offset = static_cast<std::size_t>(bad.offset);
        Require(offset >= last && bad.bytes == text.substr(offset, bad.bytes.size()));
        last = offset + bad.bytes.size();
        return std::optional<std::u16string>(u"\uFFFD");
    });
    for (;;) {
        const bool isLast = shown == text.size();
        const Exact input(text.substr(read, shown - read)), output(std::string(nextSpace(), '?'));
        const std::span<char> space(output.begin(), output.size());
        const ConversionResult step =
            isLast ? converter.Finish(input.View(), space) : converter.Convert(input.View(), space);
        result.append(output.begin(), step.written);
        read += step.read;
        if (step.status != ConversionStatus::kOutputFull) {
            Require(!isLast || step.status == ConversionStatus::kDone);
            if (isLast) {
                Require(read == text.size());
                return result;
            }
            shown = std::min(text.size(), shown + nextBlock());
        }
    }
}

const std::vector<Lum::EncodingInfo>& Encodings() {
    static const std::vector<Lum::EncodingInfo> encodings = [] {
        auto all = Lum::KnownEncodings();
        std::erase_if(all, [](const auto& info) { return !info.isConvertible; });
        return all;
    }();
    return encodings;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) {
        return 0;
    }
    const std::vector<Lum::EncodingInfo>& encodings = Encodings();
    const std::string& encoding = encodings[data[0] % encodings.size()].name;
    const std::string other = data[1] < 2 ? "utf-16" : encodings[(data[1] / 2U - 1) % encodings.size()].name;
    const std::string from = data[1] % 2 == 0 ? encoding : other;
    const std::string to = data[1] % 2 == 0 ? other : encoding;
    const std::string_view text(reinterpret_cast<const char*>(data) + 4, size - 4);
    Lum::StreamConverter converter(from, to);

    const auto inputSize = [&] { return text.size(); };
    const auto outputSize = [&] { return 16 * size + 64; };
    const Converted whole = Convert(converter, text, inputSize, outputSize);
    const auto direct = Lum::ConvertText(text, from, to);
    Require(whole == Converted{direct.status, direct.offset, direct.text});
    if (to == "utf-16" && from != "utf-16") {
        RequireThatOthersAgree(from, text, whole);
    }
    converter.Clear();
    std::mt19937 random(data[1]);
    Require(Convert(
                converter, text, [&] { return 1 + random() % (1U + data[2]); },
                [&] { return random() % (17U + data[3]); }) == whole);
    converter.Clear();
    Require(Convert(converter, text, inputSize, outputSize) == whole);

    const auto lossy = Lum::ConvertLossy(text, from, to);
    Require(lossy.offset == text.size() && lossy.text.starts_with(whole.text));
    Require(Lum::ConvertText(lossy.text, to, "utf-16").status == ConversionStatus::kDone);
    const auto nextSize = [&] { return 16 + random() % (1U + data[3]); };
    Require(lossy.text == ConvertLossy(
                              from, to, text, [&] { return 1 + random() % (1U + data[2]); }, nextSize));
    Require(from != "utf-8" || !to.starts_with("utf-") ||
            Lum::ConvertText(lossy.text, to, "utf-8").text == WellFormed(text));

    if (whole.status == ConversionStatus::kDone) {
        const auto back = Lum::ConvertText(whole.text, to, "utf-16");
        Require(back.status == ConversionStatus::kDone);
        Require(from != "utf-16" || back.text == text);
    }
    return 0;
}
