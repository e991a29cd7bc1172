// Searches of 16-bit units, eight at a step, with SSE2, which every 64-bit x86 processor has.
//
// The last step overlaps the one before it, so that nothing outside the runs is read; runs below a
// step are left to the plain searches. All answer as their plain twins do.
#pragma once

#include <emmintrin.h>
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Source/Base/UnitSearchPlain.h"

namespace Lum::Sse2 {

inline constexpr std::ptrdiff_t kStep = 8;

inline __m128i LoadUnits(const unsigned short* from) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}
inline __m128i Spread(unsigned short unit) noexcept { return _mm_set1_epi16(static_cast<short>(unit)); }

/// Two bits a lane.
inline std::uint32_t LaneBits(__m128i lanes) noexcept { return static_cast<std::uint32_t>(_mm_movemask_epi8(lanes)); }
inline int FirstLane(std::uint32_t bits) noexcept { return std::countr_zero(bits) / 2; }

/// The first place in [first, last) for which `hits`, asked for eight at once, sets the lane.
template <class Hits>
const unsigned short* FindPlace(const unsigned short* first, const unsigned short* last, Hits hits) noexcept {
    constexpr std::ptrdiff_t stride = 4 * kStep;
    while (last - first > stride) {
        const __m128i a = hits(first);
        const __m128i b = hits(first + kStep);
        const __m128i c = hits(first + 2 * kStep);
        const __m128i d = hits(first + 3 * kStep);
        if (LaneBits(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) != 0) {
            break;
        }
        first += stride;
    }
    for (; last - first > kStep; first += kStep) {
        if (const auto bits = LaneBits(hits(first)); bits != 0) {
            return first + FirstLane(bits);
        }
    }
    const auto bits = LaneBits(hits(last - kStep));
    return bits != 0 ? last - kStep + FirstLane(bits) : nullptr;
}

inline const unsigned short* FindUnit(const unsigned short* first, const unsigned short* last,
                                      unsigned short unit) noexcept {
    if (last - first < kStep) {
        return Plain::FindUnit(first, last, unit);
    }
    return FindPlace(first, last, [wanted = Spread(unit)](const unsigned short* at) {
        return _mm_cmpeq_epi16(LoadUnits(at), wanted);
    });
}

inline const unsigned short* FindPair(const unsigned short* first, const unsigned short* last,
                                      const UnitPair& pair) noexcept {
    if (last - first < kStep) {
        return Plain::FindPair(first, last, pair);
    }
    return FindPlace(first, last,
                     [one = Spread(pair.one), other = Spread(pair.other), i = pair.placeOfOne,
                      j = pair.placeOfOther](const unsigned short* at) {
                         return _mm_and_si128(_mm_cmpeq_epi16(LoadUnits(at + i), one),
                                              _mm_cmpeq_epi16(LoadUnits(at + j), other));
                     });
}

inline const unsigned short* FindLastUnit(const unsigned short* first, const unsigned short* last,
                                          unsigned short unit) noexcept {
    if (last - first < kStep) {
        return Plain::FindLastUnit(first, last, unit);
    }
    const __m128i wanted = Spread(unit);
    while (last != first) {
        const unsigned short* const at = last - first > kStep ? last - kStep : first;
        if (const auto bits = LaneBits(_mm_cmpeq_epi16(LoadUnits(at), wanted)); bits != 0) {
            return at + (std::bit_width(bits) - 1) / 2;
        }
        last = at;
    }
    return nullptr;
}

inline std::size_t CountMatches(const unsigned short* first, const unsigned short* last, unsigned short unit) noexcept {
    // As often as this, a lane counts without its sign coming into the sum.
    constexpr std::ptrdiff_t most = 0x7FFF * kStep;
    const __m128i wanted = Spread(unit);
    std::size_t count = 0;
    while (last - first >= kStep) {
        __m128i lanes = _mm_setzero_si128();
        const unsigned short* const stop = first + std::min(last - first, most) / kStep * kStep;
        for (; first != stop; first += kStep) {
            lanes = _mm_sub_epi16(lanes, _mm_cmpeq_epi16(LoadUnits(first), wanted));
        }
        alignas(16) std::int32_t sums[4];
        _mm_store_si128(reinterpret_cast<__m128i*>(sums), _mm_madd_epi16(lanes, _mm_set1_epi16(1)));
        count += static_cast<std::size_t>(sums[0] + sums[1] + sums[2] + sums[3]);
    }
    return count + Plain::CountMatches(first, last, unit);
}

}  // namespace Lum::Sse2
