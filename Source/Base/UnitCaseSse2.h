// Case of 16-bit units, eight at a step, with SSE2.
#pragma once

#include <emmintrin.h>
#include <cstddef>

#include "Source/Base/UnitCasePlain.h"

namespace Lum::Sse2 {

/// Gives what Plain::SwapCase gives.
inline void SwapCase(unsigned short* units, std::size_t size, unsigned short first) noexcept {
    constexpr std::size_t step = 8;
    // Moved to the bottom of the signed values, the letters are those below one bound.
    const __m128i toBottom = _mm_set1_epi16(static_cast<short>(0x8000 - first));
    const __m128i bound = _mm_set1_epi16(static_cast<short>(0x8000 + 26));
    const __m128i caseBit = _mm_set1_epi16(0x20);
    std::size_t i = 0;
    for (; size - i >= step; i += step) {
        auto* const at = reinterpret_cast<__m128i*>(units + i);
        const __m128i block = _mm_loadu_si128(at);
        const __m128i isLetter = _mm_cmplt_epi16(_mm_add_epi16(block, toBottom), bound);
        _mm_storeu_si128(at, _mm_xor_si128(block, _mm_and_si128(isLetter, caseBit)));
    }
    Plain::SwapCase(units + i, size - i, first);
}

}  // namespace Lum::Sse2
