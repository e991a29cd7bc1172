// Sixteen bytes at a step with SSE2, which every 64-bit x86 processor has.
#pragma once

#include <emmintrin.h>
#include <array>
#include <cstddef>
#include <cstdint>

#include "Source/Base/ByteRange.h"

namespace Lum::Sse2 {

/// Answers as Plain::Block16 does.
class Block16 {
public:
    static Block16 Load(const char* from) noexcept {
        return Block16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)));
    }
    void Store(char* to) const noexcept { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), m_Bytes); }

    [[nodiscard]] std::uint32_t Equals(char c) const noexcept { return Bits(Same(m_Bytes, c)); }
    template <char... Wanted>
    [[nodiscard]] std::uint32_t EqualsAny() const noexcept {
        __m128i lanes = _mm_setzero_si128();
        ((lanes = _mm_or_si128(lanes, Same(m_Bytes, Wanted))), ...);
        return Bits(lanes);
    }
    [[nodiscard]] std::uint32_t InRange(unsigned char low, unsigned char high) const noexcept {
        return Bits(Within(m_Bytes, low, high));
    }
    template <std::size_t N>
    [[nodiscard]] std::uint32_t InAnyRange(const std::array<ByteRange, N>& ranges) const noexcept {
        __m128i lanes = _mm_setzero_si128();
        for (const ByteRange range : ranges) {
            lanes = _mm_or_si128(lanes, Within(m_Bytes, range.low, range.high));
        }
        return Bits(lanes);
    }
    [[nodiscard]] std::uint32_t Letters() const noexcept {
        return Bits(Within(_mm_or_si128(m_Bytes, _mm_set1_epi8(0x20)), 'a', 'z'));
    }

private:
    explicit Block16(__m128i bytes) noexcept : m_Bytes(bytes) {}

    static std::uint32_t Bits(__m128i lanes) noexcept { return static_cast<std::uint32_t>(_mm_movemask_epi8(lanes)); }
    static __m128i Same(__m128i bytes, char c) noexcept { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); }
    static __m128i Within(__m128i bytes, unsigned char low, unsigned char high) noexcept {
        // Shifted down by `low`, the range is [0, high - low], and the unsigned minimum tells.
        const __m128i shifted = _mm_sub_epi8(bytes, _mm_set1_epi8(static_cast<char>(low)));
        const __m128i width = _mm_set1_epi8(static_cast<char>(high - low));
        return _mm_cmpeq_epi8(_mm_min_epu8(shifted, width), shifted);
    }

    __m128i m_Bytes;
};

}  // namespace Lum::Sse2
