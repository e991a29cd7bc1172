// Sixteen bytes with SSE2, which every 64-bit x86 processor has.
#pragma once

#include <emmintrin.h>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Source/Base/Block16Plain.h"

namespace Lum::Internal::Sse2 {

/// Answers as Plain::Block16 does.
class Block16 {
public:
    static Block16 Load(const char* from) noexcept {
        return Block16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)));
    }
    static Block16 LoadShort(const char* from, std::size_t size) noexcept {
        const auto [low, high] = ShortWords(from, size);
        return Block16(_mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low)));
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
    [[nodiscard]] std::uint32_t InAnyRange(const ByteRanges<N>& ranges) const noexcept {
        __m128i lanes = _mm_setzero_si128();
        for (std::size_t i = 0; i < N; ++i) {
            lanes = _mm_or_si128(lanes, Within(m_Bytes, Row(ranges.low[i]), Row(ranges.width[i])));
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
    /// Shifted down by `low`, the range is [0, width]: a byte in it is its own minimum with `width`.
    static __m128i Within(__m128i bytes, __m128i low, __m128i width) noexcept {
        const __m128i shifted = _mm_sub_epi8(bytes, low);
        return _mm_cmpeq_epi8(_mm_min_epu8(shifted, width), shifted);
    }
    static __m128i Within(__m128i bytes, unsigned char low, unsigned char high) noexcept {
        return Within(bytes, _mm_set1_epi8(static_cast<char>(low)), _mm_set1_epi8(static_cast<char>(high - low)));
    }
    template <class Lanes>
    static __m128i Row(const Lanes& lanes) noexcept {
        return _mm_load_si128(reinterpret_cast<const __m128i*>(lanes.data()));
    }

    __m128i m_Bytes;
};

}  // namespace Lum::Internal::Sse2
