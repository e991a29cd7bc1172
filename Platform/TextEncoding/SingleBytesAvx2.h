// Encodings of one byte a character to UTF-16, 32 characters at a time with AVX2.
//
// The units of the bytes from 80 hex on are eight tables of sixteen, which a shuffle looks up by the low half of a
// byte. The high half picks the table: in all others the shuffle gets an index for which it gives 0.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "Source/Base/Target.h"
#include "Source/Utf8/Cursor.h"

LUM_TARGET_BEGIN("avx2")

namespace Lum::Internal::TextConversion::Avx2 {

/// Converts up to the first 32 bytes with one that has no unit, which is FFFF hex in `units`. The bytes below 80 hex
/// must be those of ASCII.
inline void SkimSingleBytes(const std::uint16_t* units, Cursor& cursor) noexcept {
    constexpr int kTables = 8;
    __m256i lowBytes[kTables];
    __m256i highBytes[kTables];
    for (int i = 0; i < kTables; ++i) {
        const auto* const from = reinterpret_cast<const __m128i*>(units + 0x80 + 16 * i);
        const __m128i first = _mm_loadu_si128(from);
        const __m128i second = _mm_loadu_si128(from + 1);
        const __m128i mask = _mm_set1_epi16(0xFF);
        lowBytes[i] =
            _mm256_broadcastsi128_si256(_mm_packus_epi16(_mm_and_si128(first, mask), _mm_and_si128(second, mask)));
        highBytes[i] =
            _mm256_broadcastsi128_si256(_mm_packus_epi16(_mm_srli_epi16(first, 8), _mm_srli_epi16(second, 8)));
    }
    const __m256i ones = _mm256_set1_epi8(-1);
    const __m256i beyond = _mm256_set1_epi8(0x70);
    for (; cursor.Left() >= 32 && cursor.Space() >= 64; cursor.Advance(32, 64)) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(cursor.from));
        __m256i low = _mm256_and_si256(bytes, _mm256_cmpgt_epi8(bytes, ones));
        __m256i high = _mm256_setzero_si256();
#pragma GCC unroll 8
        for (int i = 0; i < kTables; ++i) {
            // Below 10 hex are only the bytes of this table. What is added sets the top bit of all others.
            const __m256i first = _mm256_set1_epi8(static_cast<char>(0x80 + 16 * i));
            const __m256i index = _mm256_adds_epu8(_mm256_xor_si256(bytes, first), beyond);
            low = _mm256_or_si256(low, _mm256_shuffle_epi8(lowBytes[i], index));
            high = _mm256_or_si256(high, _mm256_shuffle_epi8(highBytes[i], index));
        }
        if (_mm256_movemask_epi8(_mm256_cmpeq_epi8(_mm256_and_si256(low, high), ones)) != 0) {
            return;
        }
        const __m256i even = _mm256_unpacklo_epi8(low, high);
        const __m256i odd = _mm256_unpackhi_epi8(low, high);
        auto* const to = reinterpret_cast<__m256i*>(cursor.to);
        _mm256_storeu_si256(to, _mm256_permute2x128_si256(even, odd, 0x20));
        _mm256_storeu_si256(to + 1, _mm256_permute2x128_si256(even, odd, 0x31));
    }
}

}  // namespace Lum::Internal::TextConversion::Avx2

LUM_TARGET_END
