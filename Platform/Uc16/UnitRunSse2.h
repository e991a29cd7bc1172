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

// Two bits for each unit of a block of 16 bytes.
inline std::uint64_t FindUnit(const char* block, unsigned short unit) noexcept {
    const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(block));
    const __m128i found = _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(unit)));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(found));
}
template <std::size_t kEnds>
std::uint64_t FindEnds(const char* block, std::array<unsigned short, kEnds> ends) noexcept {
    const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(block));
    __m128i found = _mm_setzero_si128();
    for (const unsigned short end : ends) {
        found = _mm_or_si128(found, _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(end))));
    }
    return static_cast<std::uint32_t>(_mm_movemask_epi8(found));
}

template <std::size_t kEnds>
std::size_t CountBefore(const AnyUnit* text, std::array<unsigned short, kEnds> ends) noexcept {
    const char* const start = reinterpret_cast<const char*>(text);
    const std::uintptr_t before = reinterpret_cast<std::uintptr_t>(start) % 16;
    const char* at = start - before;
    if (FindUnit(at, 0) >> before != 0 || FindUnit(at + 16, 0) != 0) {
        return Plain::CountBefore(text, ends);
    }
    // Three blocks are asked at once: whether a word ends in its first or second is beyond prediction.
    const auto find = [&](const char* block) { return FindEnds(block, ends) | FindUnit(block, 0); };
    const std::uint64_t bits = (FindEnds(at, ends) | FindEnds(at + 16, ends) << 16 | find(at + 32) << 32) >> before;
    if (bits != 0) {
        return static_cast<std::size_t>(std::countr_zero(bits)) / sizeof *text;
    }
    std::uint64_t more = 0;
    for (at += 48; (more = find(at)) == 0; at += 16) {
    }
    return static_cast<std::size_t>(at + std::countr_zero(more) - start) / sizeof *text;
}

}  // namespace Uc16::Sse2
