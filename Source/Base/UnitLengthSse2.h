// Counts the units before the first 0, eight at a step, with SSE2.
#pragma once

#include <emmintrin.h>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace Lum::Sse2 {

/// Loads only where a multiple of 16 bytes begins. Such a load reaches around the text, and cannot fault:
/// no page ends inside it.
inline std::size_t CountUnits(const unsigned short* text) noexcept {
    const __m128i zero = _mm_setzero_si128();
    const auto zeroBytes = [&](const char* at) {
        const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(at));
        return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi16(units, zero)));
    };
    const char* const start = reinterpret_cast<const char*>(text);
    const std::uintptr_t before = reinterpret_cast<std::uintptr_t>(start) % 16;
    const char* at = start - before;
    std::uint32_t bits = zeroBytes(at) >> before << before;
    while (bits == 0) {
        at += 16;
        bits = zeroBytes(at);
    }
    return static_cast<std::size_t>(at + std::countr_zero(bits) - start) / sizeof *text;
}

}  // namespace Lum::Sse2
