// Property: between any encoding and UTF-16, either way, a text converted in blocks of any size into
// rooms of any size gives what it gives at once, and stops at the same place for the same reason; every
// call gets on; and what was converted without a fault can be converted back.
#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/Transcoder.h>

#include "Fuzz.h"

namespace {

using Lum::ConversionResult;
using Lum::ConversionStatus;

struct Converted {
    ConversionStatus status;
    std::size_t read;
    std::string text;

    bool operator==(const Converted& other) const = default;
};

/// A block of its exact size, for the sanitizer's sake.
struct Block {
    explicit Block(std::size_t length) : bytes(new char[length]), size(length) {}
    explicit Block(std::string_view text) : Block(text.size()) { std::copy(text.begin(), text.end(), bytes.get()); }

    std::unique_ptr<char[]> bytes;
    std::size_t size;
};

/// Every call gets at most what `nextBlock` and `nextRoom` say beyond what it has been shown already.
template <class NextBlock, class NextRoom>
Converted Convert(Lum::StreamConverter& converter, std::string_view text, const NextBlock& nextBlock,
                  const NextRoom& nextRoom) {
    Converted result{ConversionStatus::kDone, 0, {}};
    const auto take = [&](const Block& room, const ConversionResult& step) {
        Require(step.written <= room.size);
        result.text.append(room.bytes.get(), step.written);
        result.status = step.status;
    };
    for (std::size_t shown = 0;;) {
        const Block seen(text.substr(result.read, shown - result.read));
        const Block room(nextRoom());
        const ConversionResult step = converter.Convert({seen.bytes.get(), seen.size}, {room.bytes.get(), room.size});
        Require(step.read <= seen.size);
        take(room, step);
        result.read += step.read;
        if (step.status == ConversionStatus::kOutputFull) {
            Require(step.written != 0 || room.size < 16);
        } else if (step.status == ConversionStatus::kDone || step.status == ConversionStatus::kIncomplete) {
            Require(step.status == ConversionStatus::kIncomplete || step.read == seen.size);
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
            const Block room(nextRoom());
            take(room, converter.Finish({room.bytes.get(), room.size}));
        } while (result.status == ConversionStatus::kOutputFull);
    }
    return result;
}

const std::vector<Lum::EncodingInfo>& Encodings() {
    static const std::vector<Lum::EncodingInfo> encodings = [] {
        auto all = Lum::KnownEncodings();
        all.erase(std::remove_if(all.begin(), all.end(), [](const auto& info) { return !info.isConvertible; }),
                  all.end());
        return all;
    }();
    return encodings;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) {
        return 0;
    }
    const std::string& encoding = Encodings()[data[0] % Encodings().size()].name;
    const bool isToUtf16 = data[1] % 2 == 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 4, size - 4);
    const std::string from = isToUtf16 ? encoding : "utf-16";
    const std::string to = isToUtf16 ? "utf-16" : encoding;
    Lum::StreamConverter converter(from, to);

    const Converted whole = Convert(
        converter, text, [&] { return text.size(); }, [&] { return 16 * size + 64; });
    converter.Clear();
    std::mt19937 random(data[1]);
    const Converted pieces = Convert(
        converter, text, [&] { return 1 + random() % (1U + data[2]); }, [&] { return random() % (17U + data[3]); });
    Require(pieces == whole);
    converter.Clear();
    Require(Convert(
                converter, text, [&] { return text.size(); }, [&] { return 16 * size + 64; }) == whole);

    if (!isToUtf16 && whole.status == ConversionStatus::kDone) {
        Lum::StreamConverter back(to, from);
        const auto all = [&] { return whole.text.size() * 4 + 64; };
        Require(Convert(back, whole.text, all, all).status == ConversionStatus::kDone);
    }
    return 0;
}
