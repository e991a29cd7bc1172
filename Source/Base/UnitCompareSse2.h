// Compares 16-bit units, eight at a step, with SSE2.
#pragma once

#include <emmintrin.h>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Source/Base/UnitComparePlain.h"

namespace Lum::Sse2 {

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
        // The last step overlaps the one before it, in which nothing differs.
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

}  // namespace Lum::Sse2
