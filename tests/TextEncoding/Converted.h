// Runs a converter of the services over whole texts or in pieces, through blocks of their exact size.
#pragma once

#include "Platform/TextEncoding/Converter.h"
#include "tests/Generated.h"

namespace Converted {

constexpr TextEncoding kUtf16 = 0x0100;
using Lum::Internal::TextConversion::OwnedConverter;

/// The output, the last status, and how far the input was read.
struct Bytes {
    OSStatus status = noErr;
    std::size_t read = 0;
    std::string text;

    bool operator==(const Bytes& other) const = default;
};

/// Converts `input` with `space` bytes of output for each call. Whenever the converter has read what it was
/// given, it is given `step` bytes more. A text without a fault is flushed.
inline Bytes RunAll(const OwnedConverter& converter, std::string_view input, std::size_t space = std::size_t{1} << 16,
                    std::size_t step = std::string_view::npos) {
    Bytes result;
    const auto buffer = std::make_unique<unsigned char[]>(space);
    const auto take = [&](const Lum::Internal::TextConversion::Step& done) {
        result.status = done.status;
        result.read += done.read;
        result.text.append(reinterpret_cast<const char*>(buffer.get()), done.written);
        return done.status == kTECOutputBufferFullStatus && done.read + done.written != 0;
    };
    for (std::size_t given = std::min(step, input.size());; given += std::min(step, input.size() - given)) {
        const auto convert = [&] {
            const Generated::Exact block(input.substr(result.read, given - result.read));
            return converter.Convert({reinterpret_cast<const unsigned char*>(block.View().data()), block.View().size()},
                                     {buffer.get(), space});
        };
        while (take(convert())) {
        }
        if ((result.status != noErr && result.status != kTECPartialCharErr) || given == input.size()) {
            break;
        }
    }
    while (result.status == noErr && take(converter.Flush({buffer.get(), space}))) {
        result.status = noErr;
    }
    return result;
}

inline std::string_view AsBytes(std::u16string_view units) {
    return {reinterpret_cast<const char*>(units.data()), units.size() * 2};
}

/// The text of the result is UTF-16 as bytes.
inline Bytes ToUtf16(TextEncoding from, std::string_view text) { return RunAll(OwnedConverter(from, kUtf16), text); }
inline Bytes FromUtf16(TextEncoding to, std::u16string_view text) {
    return RunAll(OwnedConverter(kUtf16, to), AsBytes(text));
}

}  // namespace Converted
