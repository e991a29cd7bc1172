// Compares 16-bit units, eight at a step, with SSE2.
#pragma once

#include <emmintrin.h>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Source/Base/UnitComparePlain.h"

namespace Lum::Sse2 {

/// Answers as Plain::FirstDifference does.
inline std::size_t FirstDifference(const unsigned short* a, const unsigned short* b, std::size_t size) noexcept {
    constexpr std::size_t step = 8;
    const auto load = [](const unsigned short* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); };
    std::size_t i = 0;
    for (; size - i >= step; i += step) {
        const auto equal = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi16(load(a + i), load(b + i))));
        if (equal != 0xFFFF) {
            return i + static_cast<std::size_t>(std::countr_one(equal)) / 2;
        }
    }
    return i + Plain::FirstDifference(a + i, b + i, size - i);
}

}  // namespace Lum::Sse2
