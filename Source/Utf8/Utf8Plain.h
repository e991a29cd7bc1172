// UTF-8 to and from UTF-16 in plain C++, strictly after RFC 3629. This is the definition: every faster variant
// must have the same results.
#pragma once

#include "Source/Utf8/Cursor.h"

namespace Lum::Internal::TextConversion::Plain {

constexpr bool IsContinuation(unsigned char byte) noexcept { return (byte & 0xC0) == 0x80; }

/// How many bytes an element with this first byte has; 0 for a byte that begins none.
constexpr std::size_t Utf8Size(unsigned char first) noexcept {
    return first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

/// Whether `second` may follow `first`, which begins an element of two bytes or more. The second byte
/// decides whether an element is overlong, a surrogate, or above 10FFFF.
constexpr bool IsSecondByte(unsigned char first, unsigned char second) noexcept {
    switch (first) {
        case 0xE0:
            return second >= 0xA0 && second <= 0xBF;
        case 0xED:
            return second >= 0x80 && second <= 0x9F;
        case 0xF0:
            return second >= 0x90 && second <= 0xBF;
        case 0xF4:
            return second >= 0x80 && second <= 0x8F;
        default:
            return IsContinuation(second);
    }
}

/// What is wrong with the bad element at `from`: incomplete if more bytes could complete it.
constexpr Ending Utf8Fault(const unsigned char* from, const unsigned char* end) noexcept {
    const std::size_t size = Utf8Size(*from);
    const auto left = static_cast<std::size_t>(end - from);
    if (size <= left || (left > 1 && !IsSecondByte(from[0], from[1])) || (left > 2 && !IsContinuation(from[2]))) {
        return Ending::kMalformed;
    }
    return Ending::kIncomplete;
}

/// Whether a whole well-formed element of `size` bytes, two or more, is at `from`.
constexpr bool IsUtf8Element(const unsigned char* from, const unsigned char* end, std::size_t size) noexcept {
    return size <= static_cast<std::size_t>(end - from) && IsSecondByte(from[0], from[1]) &&
           (size < 3 || IsContinuation(from[2])) && (size < 4 || IsContinuation(from[3]));
}

/// Converts blocks of eight characters while all of them are ASCII.
inline void SkimAsciiToUtf16(Cursor& cursor) noexcept {
    for (std::uint64_t bytes = 0; cursor.Left() >= 8 && cursor.Space() >= 16; cursor.Advance(8, 16)) {
        std::memcpy(&bytes, cursor.from, 8);
        if ((bytes & 0x8080808080808080) != 0) {
            return;
        }
        for (std::size_t i = 0; i < 8; ++i) {
            StoreUnit(cursor.to + 2 * i, cursor.from[i]);
        }
    }
}

inline void SkimAsciiFromUtf16(Cursor& cursor) noexcept {
    for (std::uint64_t units[2] = {}; cursor.Left() >= 16 && cursor.Space() >= 8; cursor.Advance(16, 8)) {
        std::memcpy(units, cursor.from, 16);
        if (((units[0] | units[1]) & 0xFF80FF80FF80FF80) != 0) {
            return;
        }
        for (std::size_t i = 0; i < 8; ++i) {
            cursor.to[i] = static_cast<unsigned char>(LoadUnit(cursor.from + 2 * i));
        }
    }
}

/// Converts the rest of the input from `cursor` on.
inline Progress Utf8ToUtf16Rest(Cursor cursor, Input input, Output output) noexcept {
    for (SkimAsciiToUtf16(cursor); cursor.from != cursor.fromEnd;) {
        const unsigned char* const from = cursor.from;
        const std::size_t size = Utf8Size(*from);
        const std::size_t written = size == 4 ? 4 : 2;
        if (size != 1 && (size == 0 || !IsUtf8Element(from, cursor.fromEnd, size))) {
            return cursor.Stop(Utf8Fault(from, cursor.fromEnd), input, output);
        }
        if (cursor.Space() < written) {
            return cursor.Stop(Ending::kOutputFull, input, output);
        }
        const auto bits = [&](std::size_t i) { return std::uint32_t{from[i]} & 0x3F; };
        switch (size) {
            case 1:
                StoreUnit(cursor.to, *from);
                break;
            case 2:
                StoreUnit(cursor.to, (*from & 0x1FU) << 6 | bits(1));
                break;
            case 3:
                StoreUnit(cursor.to, (*from & 0x0FU) << 12 | bits(1) << 6 | bits(2));
                break;
            default: {
                const std::uint32_t scalar = (*from & 0x07U) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3);
                StoreUnit(cursor.to, 0xD7C0 + (scalar >> 10));
                StoreUnit(cursor.to + 2, 0xDC00 | (scalar & 0x3FF));
            }
        }
        cursor.Advance(size, written);
    }
    return cursor.Stop(Ending::kDone, input, output);
}

/// Converts the rest of the input from `cursor` on.
inline Progress Utf16ToUtf8Rest(Cursor cursor, Input input, Output output) noexcept {
    for (SkimAsciiFromUtf16(cursor); cursor.from != cursor.fromEnd;) {
        if (const Ending fault = Utf16Fault(cursor.from, cursor.fromEnd); fault != Ending::kDone) {
            return cursor.Stop(fault, input, output);
        }
        const std::uint32_t unit = LoadUnit(cursor.from);
        const bool isPair = IsLeadSurrogate(unit);
        const std::size_t size = unit < 0x80 ? 1 : unit < 0x800 ? 2 : isPair ? 4 : 3;
        if (cursor.Space() < size) {
            return cursor.Stop(Ending::kOutputFull, input, output);
        }
        const auto store = [&](std::size_t i, std::uint32_t byte) { cursor.to[i] = static_cast<unsigned char>(byte); };
        const auto tail = [&](std::size_t i, std::uint32_t bits) { store(i, 0x80 | (bits & 0x3F)); };
        switch (size) {
            case 1:
                store(0, unit);
                break;
            case 2:
                store(0, 0xC0 | unit >> 6);
                tail(1, unit);
                break;
            case 3:
                store(0, 0xE0 | unit >> 12);
                tail(1, unit >> 6);
                tail(2, unit);
                break;
            default: {
                const std::uint32_t scalar = FromSurrogates(unit, LoadUnit(cursor.from + 2));
                store(0, 0xF0 | scalar >> 18);
                tail(1, scalar >> 12);
                tail(2, scalar >> 6);
                tail(3, scalar);
            }
        }
        cursor.Advance(isPair ? 4 : 2, size);
    }
    return cursor.Stop(Ending::kDone, input, output);
}

inline Progress Utf8ToUtf16(Input input, Output output) noexcept {
    return Utf8ToUtf16Rest(Cursor(input, output), input, output);
}

inline Progress Utf16ToUtf8(Input input, Output output) noexcept {
    return Utf16ToUtf8Rest(Cursor(input, output), input, output);
}

}  // namespace Lum::Internal::TextConversion::Plain
