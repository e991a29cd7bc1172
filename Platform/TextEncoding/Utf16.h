// UTF-16 as bytes to UTF-16: checked, and with its bytes swapped where the order is not the host's.
#pragma once

#include "Platform/TextEncoding/Cursor.h"

namespace TextConversion {

template <bool IsSwapped>
constexpr std::uint32_t InOrder(std::uint32_t unit) noexcept {
    return IsSwapped ? (unit & 0xFF) << 8 | unit >> 8 : unit;
}

/// Copies the blocks that come next and have no surrogates.
template <bool SwapsInput, bool SwapsOutput>
void SkimUtf16(Cursor& cursor) noexcept {
    constexpr std::size_t block = 16;
    while (cursor.Left() >= 2 * block && cursor.Room() >= 2 * block) {
        std::uint32_t surrogates = 0;
        for (std::size_t i = 0; i < block; ++i) {
            const std::uint32_t unit = InOrder<SwapsInput>(LoadUnit(cursor.from + 2 * i));
            surrogates |= static_cast<std::uint32_t>((unit & 0xF800) == 0xD800);
        }
        if (surrogates != 0) {
            return;
        }
        for (std::size_t i = 0; i < block; ++i) {
            StoreUnit(cursor.to + 2 * i, InOrder<SwapsInput != SwapsOutput>(LoadUnit(cursor.from + 2 * i)));
        }
        cursor.Advance(2 * block, 2 * block);
    }
}

/// Swaps what is read, what is written, or nothing.
template <bool SwapsInput, bool SwapsOutput>
Progress CopyUtf16(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    for (SkimUtf16<SwapsInput, SwapsOutput>(cursor); cursor.from != cursor.fromEnd;) {
        unsigned char element[4];
        const std::size_t seen = cursor.Left() < 4 ? cursor.Left() : 4;
        std::memcpy(element, cursor.from, seen);
        for (std::size_t i = 0; i + 2 <= seen; i += 2) {
            StoreUnit(element + i, InOrder<SwapsInput>(LoadUnit(element + i)));
        }
        if (const OSStatus fault = Utf16Fault(element, element + seen); fault != noErr) {
            return cursor.Stop(fault, input, output);
        }
        const std::size_t size = IsLeadSurrogate(LoadUnit(element)) ? 4 : 2;
        if (cursor.Room() < size) {
            return cursor.Stop(kTECOutputBufferFullStatus, input, output);
        }
        for (std::size_t i = 0; i < size; i += 2) {
            StoreUnit(cursor.to + i, InOrder<SwapsOutput>(LoadUnit(element + i)));
        }
        cursor.Advance(size, size);
    }
    return cursor.Stop(noErr, input, output);
}

}  // namespace TextConversion
