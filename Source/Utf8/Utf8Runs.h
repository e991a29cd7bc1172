// Runs of characters of three or four bytes to UTF-16, sixteen bytes at a time with SSSE3.
//
// A run is taken as far as a guess holds: sixteen bytes are converted as if all were of the kind that the first
// one begins, and counted are those that are. What was written behind them is written over later.
#pragma once

#include <tmmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>

#include "Source/Base/Target.h"
#include "Source/Utf8/Cursor.h"

LUM_TARGET_BEGIN("ssse3")

namespace Lum::Internal::TextConversion::Runs {

/// Lane by lane, the bits of `kMask`, shifted up or, where `kUp` is negative, down.
template <unsigned kMask, int kUp>
__m128i UnitField(__m128i lanes) noexcept {
    const __m128i field = _mm_and_si128(lanes, _mm_set1_epi16(static_cast<short>(kMask)));
    if constexpr (kUp < 0) {
        return _mm_srli_epi16(field, -kUp);
    } else {
        return _mm_slli_epi16(field, kUp);
    }
}
template <unsigned kMask, int kUp>
__m128i WordField(__m128i lanes) noexcept {
    const __m128i field = _mm_and_si128(lanes, _mm_set1_epi32(static_cast<int>(kMask)));
    if constexpr (kUp < 0) {
        return _mm_srli_epi32(field, -kUp);
    } else {
        return _mm_slli_epi32(field, kUp);
    }
}
template <unsigned kMask, unsigned kBits>
__m128i HasUnitBits(__m128i lanes) noexcept {
    return _mm_cmpeq_epi16(UnitField<kMask, 0>(lanes), _mm_set1_epi16(static_cast<short>(kBits)));
}

/// How many bytes from the first on are set.
inline std::size_t CountLeading(__m128i lanes) noexcept {
    return static_cast<std::size_t>(std::countr_one(static_cast<std::uint32_t>(_mm_movemask_epi8(lanes))));
}

/// Converts five characters of three bytes; returns how many of the fifteen bytes are such.
inline std::size_t ThreeBytesToUtf16(__m128i bytes, __m128i* to) noexcept {
    // A lane for each character: the second byte with the first above it, and the third.
    const __m128i firstTwo =
        _mm_shuffle_epi8(bytes, _mm_setr_epi8(1, 0, 4, 3, 7, 6, 10, 9, 13, 12, -1, -1, -1, -1, -1, -1));
    const __m128i third =
        _mm_shuffle_epi8(bytes, _mm_setr_epi8(2, -1, 5, -1, 8, -1, 11, -1, 14, -1, -1, -1, -1, -1, -1, -1));
    const __m128i head = _mm_or_si128(UnitField<0x0F00, 4>(firstTwo), UnitField<0x003F, 6>(firstTwo));
    const __m128i units = _mm_or_si128(head, UnitField<0x003F, 0>(third));
    _mm_storeu_si128(to, units);
    const __m128i isForm = _mm_and_si128(HasUnitBits<0xF0C0, 0xE080>(firstTwo), HasUnitBits<0x00C0, 0x0080>(third));
    // Below 800 hex it would be overlong, and surrogates are no characters.
    const __m128i isNone = _mm_or_si128(HasUnitBits<0xF800, 0>(units), HasUnitBits<0xF800, 0xD800>(units));
    return CountLeading(_mm_andnot_si128(isNone, isForm)) / 2 * 3;
}

/// Converts four characters of four bytes; returns how many of the sixteen bytes are such.
inline std::size_t FourBytesToUtf16(__m128i bytes, __m128i* to) noexcept {
    const __m128i head = _mm_or_si128(WordField<0x07, 18>(bytes), WordField<0x3F00, 12 - 8>(bytes));
    const __m128i tail = _mm_or_si128(WordField<0x3F0000, 6 - 16>(bytes), WordField<0x3F000000, -24>(bytes));
    const __m128i scalars = _mm_or_si128(head, tail);
    const __m128i lead = _mm_add_epi32(_mm_srli_epi32(scalars, 10), _mm_set1_epi32(0xD7C0));
    const __m128i trail = _mm_or_si128(WordField<0x3FF, 16>(scalars), _mm_set1_epi32(static_cast<int>(0xDC000000)));
    _mm_storeu_si128(to, _mm_or_si128(lead, trail));
    const __m128i isForm =
        _mm_cmpeq_epi32(WordField<0xC0C0C0F8, 0>(bytes), _mm_set1_epi32(static_cast<int>(0x808080F0)));
    const __m128i isInRange = _mm_and_si128(_mm_cmpgt_epi32(scalars, _mm_set1_epi32(0xFFFF)),
                                            _mm_cmplt_epi32(scalars, _mm_set1_epi32(0x110000)));
    return CountLeading(_mm_and_si128(isInRange, isForm));
}

/// Converts runs as long as the next character begins with `kLeast` or a greater byte, and no further than
/// whole steps fit input and output.
template <unsigned kLeast>
[[gnu::noinline]] void Skim(Cursor& cursor) noexcept {
    for (std::size_t read = 16; read != 0 && cursor.Left() >= 16 && cursor.Space() >= 16 && *cursor.from >= kLeast;) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(cursor.from));
        auto* const to = reinterpret_cast<__m128i*>(cursor.to);
        // The likely count is a constant, so that the next step need not wait for the counting.
        if (*cursor.from >= 0xF0) {
            read = FourBytesToUtf16(bytes, to);
            if (read == 16) [[likely]] {
                cursor.Advance(16, 16);
            } else {
                cursor.Advance(read, read);
            }
        } else {
            read = ThreeBytesToUtf16(bytes, to);
            if (read == 15) [[likely]] {
                cursor.Advance(15, 10);
            } else {
                cursor.Advance(read, read / 3 * 2);
            }
        }
    }
}

}  // namespace Lum::Internal::TextConversion::Runs

LUM_TARGET_END
