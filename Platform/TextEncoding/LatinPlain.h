// Latin-1 and ASCII to and from UTF-16 in plain C++: the definition of what every faster variant gives.
#pragma once

#include "Platform/TextEncoding/Cursor.h"

namespace TextConversion::Plain {

/// The encoding has the characters below `Limit`: 0x100 or 0x80. A byte from there on is malformed.
template <std::uint32_t Limit>
inline Progress LatinToUtf16(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    while (cursor.from != cursor.fromEnd) {
        if (*cursor.from >= Limit) {
            return cursor.Stop(kTextMalformedInputErr, input, output);
        }
        if (cursor.Room() < 2) {
            return cursor.Stop(kTECOutputBufferFullStatus, input, output);
        }
        StoreUnit(cursor.to, *cursor.from++);
        cursor.to += 2;
    }
    return cursor.Stop(noErr, input, output);
}

template <std::uint32_t Limit>
inline Progress Utf16ToLatin(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    while (cursor.from != cursor.fromEnd) {
        if (const OSStatus fault = Utf16Fault(cursor.from, cursor.fromEnd); fault != noErr) {
            return cursor.Stop(fault, input, output);
        }
        const std::uint32_t unit = LoadUnit(cursor.from);
        if (unit >= Limit) {
            return cursor.Stop(kTECUnmappableElementErr, input, output);
        }
        if (cursor.Room() < 1) {
            return cursor.Stop(kTECOutputBufferFullStatus, input, output);
        }
        *cursor.to++ = static_cast<unsigned char>(unit);
        cursor.from += 2;
    }
    return cursor.Stop(noErr, input, output);
}

}  // namespace TextConversion::Plain
