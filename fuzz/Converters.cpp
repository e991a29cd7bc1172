// Property: between any two encodings, a text that is converted in blocks of any size into outputs of any size
// gives the same text, status and position as the whole text at once, by a StreamConverter and by ConvertText.
// Every call makes progress. The result of a conversion without a fault can be converted again, and to UTF-16
// it gives the text that it was made from, if that was UTF-16.
#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/Transcoder.h>

#include "fuzz/Fuzz.h"

namespace {

using Lum::ConversionResult;
using Lum::ConversionStatus;

struct Converted {
    ConversionStatus status;
    std::size_t read;
    std::string text;

    bool operator==(const Converted& other) const = default;
};

/// A block of its exact size, so that a sanitizer sees every access outside.
struct Block {
    explicit Block(std::size_t length) : bytes(new char[length]), size(length) {}
    explicit Block(std::string_view text) : Block(text.size()) { std::copy(text.begin(), text.end(), bytes.get()); }

    std::unique_ptr<char[]> bytes;
    std::size_t size;
};

/// Each call gets `nextBlock()` more bytes of input than the last one, and an output of `nextSpace()` bytes.
template <class NextBlock, class NextSpace>
Converted Convert(Lum::StreamConverter& converter, std::string_view text, const NextBlock& nextBlock,
                  const NextSpace& nextSpace) {
    Converted result{ConversionStatus::kDone, 0, {}};
    const auto take = [&](const Block& output, const ConversionResult& step) {
        Require(step.written <= output.size);
        result.text.append(output.bytes.get(), step.written);
        result.status = step.status;
    };
    for (std::size_t shown = 0;;) {
        const Block input(text.substr(result.read, shown - result.read));
        const Block output(nextSpace());
        const ConversionResult step =
            converter.Convert({input.bytes.get(), input.size}, {output.bytes.get(), output.size});
        Require(step.read <= input.size);
        take(output, step);
        result.read += step.read;
        if (step.status == ConversionStatus::kOutputFull) {
            Require(step.written != 0 || output.size < 16);
        } else if (step.status == ConversionStatus::kDone || step.status == ConversionStatus::kIncomplete) {
            Require(step.status == ConversionStatus::kIncomplete || step.read == input.size);
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
            const Block output(nextSpace());
            take(output, converter.Finish({output.bytes.get(), output.size}));
        } while (result.status == ConversionStatus::kOutputFull);
    }
    return result;
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
    converter.Clear();
    std::mt19937 random(data[1]);
    Require(Convert(
                converter, text, [&] { return 1 + random() % (1U + data[2]); },
                [&] { return random() % (17U + data[3]); }) == whole);
    converter.Clear();
    Require(Convert(converter, text, inputSize, outputSize) == whole);

    if (whole.status == ConversionStatus::kDone) {
        const auto back = Lum::ConvertText(whole.text, to, "utf-16");
        Require(back.status == ConversionStatus::kDone);
        Require(from != "utf-16" || back.text == text);
    }
    return 0;
}
