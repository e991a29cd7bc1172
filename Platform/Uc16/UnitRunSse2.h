// Counts units up to an end, eight at a step, with SSE2.
//
// Loads only where a multiple of 16 bytes begins, and only while no 0 was in the blocks before. Such a
// load may reach around the text, but cannot fault: no page ends inside it.
#pragma once

#include <emmintrin.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Platform/Uc16/UnitRunPlain.h"

namespace Uc16::Sse2 {

/// Two bits for each unit of the block that is 0 or one of `ends`.
template <std::size_t kEnds>
std::uint64_t FindEnds(const char* block, const std::array<unsigned short, kEnds>& ends) noexcept {
    const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(block));
    __m128i found = _mm_cmpeq_epi16(units, _mm_setzero_si128());
    for (const unsigned short end : ends) {
        found = _mm_or_si128(found, _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(end))));
    }
    return static_cast<std::uint32_t>(_mm_movemask_epi8(found));
}
inline std::uint64_t FindZeros(const char* block) noexcept { return FindEnds<0>(block, {}); }

template <std::size_t kEnds>
std::size_t CountBefore(const AnyUnit* text, const std::array<unsigned short, kEnds>& ends) noexcept {
    const char* const start = reinterpret_cast<const char*>(text);
    const std::uintptr_t before = reinterpret_cast<std::uintptr_t>(start) % 16;
    const char* at = start - before;
    if (FindZeros(at) >> before != 0 || FindZeros(at + 16) != 0) {
        return Plain::CountBefore(text, ends);
    }
    // Three blocks are asked at once: whether a word ends in its first or second is beyond prediction.
    std::uint64_t bits = FindEnds(at, ends) | FindEnds(at + 16, ends) << 16 | FindEnds(at + 32, ends) << 32;
    bits = bits >> before << before;
    if (bits == 0) {
        at += 48;
        while ((bits = FindEnds(at, ends)) == 0) {
            at += 16;
        }
    }
    return static_cast<std::size_t>(at + std::countr_zero(bits) - start) / sizeof *text;
}

}  // namespace Uc16::Sse2
