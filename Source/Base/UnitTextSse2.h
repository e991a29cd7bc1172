// Lengths of 0-terminated texts, and comparison, with SSE2: eight units a step.
//
// What counts loads only where a multiple of 16 bytes begins, and only while no 0 was in the blocks
// before. Such a load may reach around the text, but cannot fault: no page ends inside it.
#pragma once

#include <emmintrin.h>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Source/Base/UnitText.h"

namespace Lum::Internal::Sse2 {

// Two bits for each unit of a block of 16 bytes.
inline std::uint64_t UnitBits(const char* block, unsigned short unit) noexcept {
    const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(block));
    const __m128i found = _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(unit)));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(found));
}
template <std::size_t kEnds>
std::uint64_t AnyUnitBits(const char* block, std::array<unsigned short, kEnds> ends) noexcept {
    const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(block));
    __m128i found = _mm_setzero_si128();
    for (const unsigned short end : ends) {
        found = _mm_or_si128(found, _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(end))));
    }
    return static_cast<std::uint32_t>(_mm_movemask_epi8(found));
}

inline std::size_t CountUnits(const AnyUnit* text) noexcept {
    const char* const start = reinterpret_cast<const char*>(text);
    const std::uintptr_t before = reinterpret_cast<std::uintptr_t>(start) % 16;
    const char* at = start - before;
    std::uint64_t bits = UnitBits(at, 0) >> before << before;
    while (bits == 0) {
        at += 16;
        bits = UnitBits(at, 0);
    }
    return static_cast<std::size_t>(at + std::countr_zero(bits) - start) / sizeof *text;
}

template <std::size_t kEnds>
std::size_t CountBefore(const AnyUnit* text, std::array<unsigned short, kEnds> ends) noexcept {
    const char* const start = reinterpret_cast<const char*>(text);
    const std::uintptr_t before = reinterpret_cast<std::uintptr_t>(start) % 16;
    const char* at = start - before;
    if (UnitBits(at, 0) >> before != 0 || UnitBits(at + 16, 0) != 0) {
        return Plain::CountBefore(text, ends);
    }
    // Three blocks are looked at together: whether a word ends in its first or its second is beyond prediction.
    const auto find = [&](const char* block) { return AnyUnitBits(block, ends) | UnitBits(block, 0); };
    const std::uint64_t bits =
        (AnyUnitBits(at, ends) | AnyUnitBits(at + 16, ends) << 16 | find(at + 32) << 32) >> before;
    if (bits != 0) {
        return static_cast<std::size_t>(std::countr_zero(bits)) / sizeof *text;
    }
    std::uint64_t more = 0;
    for (at += 48; (more = find(at)) == 0; at += 16) {
    }
    return static_cast<std::size_t>(at + std::countr_zero(more) - start) / sizeof *text;
}

/// Two bits for each of eight units.
inline std::uint32_t EqualBits(const unsigned short* a, const unsigned short* b) noexcept {
    const auto load = [](const unsigned short* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); };
    return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi16(load(a), load(b))));
}

/// Four units as one value, the first in the lowest bits.
inline std::uint64_t Word(const unsigned short* units) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, units, sizeof word);
    return word;
}

/// Answers as Plain::FirstDifference does.
inline std::size_t FirstDifference(const unsigned short* a, const unsigned short* b, std::size_t size) noexcept {
    constexpr std::size_t step = 8;
    std::size_t i = 0;
    for (; size - i >= step; i += step) {
        if (const auto equal = EqualBits(a + i, b + i); equal != 0xFFFF) {
            return i + static_cast<std::size_t>(std::countr_one(equal)) / 2;
        }
    }
    if (i == size) {
        return size;
    }
    if (size >= step) {
        // The last block overlaps the one before it, in which nothing differs.
        i = size - step;
        return i + static_cast<std::size_t>(std::countr_one(EqualBits(a + i, b + i))) / 2;
    }
    if (size < 4) {
        return Plain::FirstDifference(a, b, size);
    }
    // Two words that overlap.
    if (const std::uint64_t different = Word(a) ^ Word(b); different != 0) {
        return static_cast<std::size_t>(std::countr_zero(different)) / 16;
    }
    const std::uint64_t different = Word(a + size - 4) ^ Word(b + size - 4);
    return size - 4 + static_cast<std::size_t>(std::countr_zero(different)) / 16;
}

}  // namespace Lum::Internal::Sse2
