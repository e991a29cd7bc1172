// UTF-16 as bytes to UTF-16: checked, and with its bytes swapped where the order is not the host's.
#pragma once

#include <bit>

#include "Platform/TextEncoding/Cursor.h"

namespace TextConversion::Plain {

constexpr std::uint32_t Swapped(std::uint32_t unit) noexcept { return (unit & 0xFF) << 8 | unit >> 8; }

/// Swaps what is read, what is written, or nothing.
template <bool SwapsInput, bool SwapsOutput>
inline Progress CopyUtf16(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    while (cursor.from != cursor.fromEnd) {
        unsigned char element[4];
        const std::size_t seen = cursor.Left() < 4 ? cursor.Left() : 4;
        std::memcpy(element, cursor.from, seen);
        if (SwapsInput) {
            for (std::size_t i = 0; i + 2 <= seen; i += 2) {
                StoreUnit(element + i, Swapped(LoadUnit(element + i)));
            }
        }
        if (const OSStatus fault = Utf16Fault(element, element + seen); fault != noErr) {
            return cursor.Stop(fault, input, output);
        }
        const std::size_t size = IsLeadSurrogate(LoadUnit(element)) ? 4 : 2;
        if (cursor.Room() < size) {
            return cursor.Stop(kTECOutputBufferFullStatus, input, output);
        }
        for (std::size_t i = 0; i < size; i += 2) {
            const std::uint32_t unit = LoadUnit(element + i);
            StoreUnit(cursor.to + i, SwapsOutput ? Swapped(unit) : unit);
        }
        cursor.from += size;
        cursor.to += size;
    }
    return cursor.Stop(noErr, input, output);
}

inline Progress Utf16ToUtf16(Input input, Output output) noexcept { return CopyUtf16<false, false>(input, output); }
inline Progress SwappedToUtf16(Input input, Output output) noexcept { return CopyUtf16<true, false>(input, output); }
inline Progress Utf16ToSwapped(Input input, Output output) noexcept { return CopyUtf16<false, true>(input, output); }

}  // namespace TextConversion::Plain
