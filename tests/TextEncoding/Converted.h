// Runs a converter over whole texts or in pieces, through blocks of their exact size.
#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace Converted {

constexpr TextEncoding kUtf16 = 0x0100;

struct Disposer {
    void operator()(TECObjectRef converter) const { TECDisposeConverter(converter); }
};
using ConverterPtr = std::unique_ptr<OpaqueTECObjectRef, Disposer>;

inline ConverterPtr Make(TextEncoding from, TextEncoding to) {
    TECObjectRef converter = nullptr;
    TECCreateConverter(&converter, from, to);
    return ConverterPtr(converter);
}

/// What came out, the last status, and how far the input was read.
struct Bytes {
    OSStatus status = noErr;
    std::size_t read = 0;
    std::string text;
};

/// Converts `input` with `room` bytes of output for each call, showing the converter `step` bytes more
/// whenever it has come to the end of what it has seen; a text that ends well is flushed.
inline Bytes RunAll(TECObjectRef converter, std::string_view input, std::size_t room = std::size_t{1} << 16,
                    std::size_t step = std::string_view::npos) {
    Bytes result;
    std::size_t shown = std::min(step, input.size());
    const std::unique_ptr<unsigned char[]> output(new unsigned char[room]);
    for (bool isAtEnd = false; !isAtEnd;) {
        const std::size_t size = shown - result.read;
        const std::unique_ptr<unsigned char[]> seen(new unsigned char[size]);
        std::memcpy(seen.get(), input.data() + result.read, size);
        ByteCount used = 0;
        ByteCount written = 0;
        result.status = TECConvertText(converter, seen.get(), size, &used, output.get(), room, &written);
        result.read += used;
        result.text.append(reinterpret_cast<const char*>(output.get()), written);
        const bool wantsMore = result.status == noErr || result.status == kTECPartialCharErr;
        if (result.status == kTECOutputBufferFullStatus) {
            isAtEnd = used == 0 && written == 0;
        } else if (wantsMore && shown < input.size()) {
            shown += std::min(step, input.size() - shown);
        } else {
            isAtEnd = true;
        }
    }
    while (result.status == noErr || result.status == kTECOutputBufferFullStatus) {
        ByteCount written = 0;
        const OSStatus status = TECFlushText(converter, output.get(), room, &written);
        result.text.append(reinterpret_cast<const char*>(output.get()), written);
        if (result.status = status; status == noErr || written == 0) {
            break;
        }
    }
    return result;
}

struct Units {
    OSStatus status;
    std::size_t read;
    std::u16string text;
};

inline std::u16string AsUnits(std::string_view bytes) {
    std::u16string units(bytes.size() / 2, u'\0');
    std::memcpy(units.data(), bytes.data(), units.size() * 2);
    return units;
}

inline std::string_view AsBytes(std::u16string_view units) {
    return {reinterpret_cast<const char*>(units.data()), units.size() * 2};
}

inline Units ToUtf16(TextEncoding from, std::string_view text) {
    const Bytes bytes = RunAll(Make(from, kUtf16).get(), text);
    return {bytes.status, bytes.read, AsUnits(bytes.text)};
}

inline Bytes FromUtf16(TextEncoding to, std::u16string_view text) {
    return RunAll(Make(kUtf16, to).get(), AsBytes(text));
}

}  // namespace Converted
