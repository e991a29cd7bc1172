// Latin-1 and ASCII to and from UTF-16: blocks of sixteen characters, of which the compiler makes vectors,
// and the rest one by one.
#pragma once

#include <algorithm>

#include "Platform/TextEncoding/Cursor.h"

namespace TextConversion {

constexpr std::size_t kLatinBlock = 16;

// The encodings have the characters below `Limit`: 0x100 or 0x80.

/// Converts the blocks that come next and have nothing from `Limit` on.
template <std::uint32_t Limit>
void SkimLatinToUtf16(Cursor& cursor) noexcept {
    while (cursor.Left() >= kLatinBlock && cursor.Room() >= 2 * kLatinBlock) {
        std::uint32_t all = 0;
        for (std::size_t i = 0; i < kLatinBlock; ++i) {
            all |= cursor.from[i];
        }
        if (all >= Limit) {
            return;
        }
        for (std::size_t i = 0; i < kLatinBlock; ++i) {
            StoreUnit(cursor.to + 2 * i, cursor.from[i]);
        }
        cursor.Advance(kLatinBlock, 2 * kLatinBlock);
    }
}

template <std::uint32_t Limit>
void SkimLatinFromUtf16(Cursor& cursor) noexcept {
    while (cursor.Left() >= 2 * kLatinBlock && cursor.Room() >= kLatinBlock) {
        std::uint16_t units[kLatinBlock];
        std::memcpy(units, cursor.from, sizeof units);
        std::uint16_t all = 0;
        for (const std::uint16_t unit : units) {
            all = static_cast<std::uint16_t>(all | unit);
        }
        if (all >= Limit) {
            return;
        }
        for (std::size_t i = 0; i < kLatinBlock; ++i) {
            cursor.to[i] = static_cast<unsigned char>(units[i]);
        }
        cursor.Advance(2 * kLatinBlock, kLatinBlock);
    }
}

/// A byte from `Limit` on is malformed.
template <std::uint32_t Limit>
Progress LatinToUtf16(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    for (SkimLatinToUtf16<Limit>(cursor); cursor.from != cursor.fromEnd; cursor.Advance(1, 2)) {
        if (*cursor.from >= Limit) {
            return cursor.Stop(kTextMalformedInputErr, input, output);
        }
        if (cursor.Room() < 2) {
            return cursor.Stop(kTECOutputBufferFullStatus, input, output);
        }
        StoreUnit(cursor.to, *cursor.from);
    }
    return cursor.Stop(noErr, input, output);
}

template <std::uint32_t Limit>
Progress Utf16ToLatin(Input input, Output output) noexcept {
    Cursor cursor(input, output);
    for (SkimLatinFromUtf16<Limit>(cursor); cursor.from != cursor.fromEnd; cursor.Advance(2, 1)) {
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
        *cursor.to = static_cast<unsigned char>(unit);
    }
    return cursor.Stop(noErr, input, output);
}

}  // namespace TextConversion
