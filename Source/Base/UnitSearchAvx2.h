// Searches of 16-bit units, sixteen at a step, with AVX2. As those with SSE2, to which short runs are left.
#pragma once

#include <immintrin.h>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Source/Base/UnitSearchSse2.h"

namespace Lum::Avx2 {

inline constexpr std::ptrdiff_t kStep = 16;

inline bool IsSupported() noexcept {
    // Static initialisers may come here before the compiler's own has looked at the processor.
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
}

#define LUM_AVX2 __attribute__((target("avx2")))  // NOLINT(cppcoreguidelines-macro-usage): an attribute

LUM_AVX2 inline __m256i LoadUnits(const unsigned short* from) noexcept {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}
LUM_AVX2 inline __m256i Spread(unsigned short unit) noexcept { return _mm256_set1_epi16(static_cast<short>(unit)); }

/// Lanes of ones where the unit is the wanted one.
struct UnitLanes {
    __m256i wanted;

    LUM_AVX2 explicit UnitLanes(unsigned short unit) noexcept : wanted(Spread(unit)) {}
    [[nodiscard]] LUM_AVX2 __m256i At(const unsigned short* at) const noexcept {
        return _mm256_cmpeq_epi16(LoadUnits(at), wanted);
    }
};

/// Lanes of ones where both units of the pair stand at their distances.
struct PairLanes {
    __m256i one;
    __m256i other;
    std::size_t placeOfOne;
    std::size_t placeOfOther;

    LUM_AVX2 explicit PairLanes(const UnitPair& pair) noexcept
        : one(Spread(pair.one)),
          other(Spread(pair.other)),
          placeOfOne(pair.placeOfOne),
          placeOfOther(pair.placeOfOther) {}
    [[nodiscard]] LUM_AVX2 __m256i At(const unsigned short* at) const noexcept {
        return _mm256_and_si256(_mm256_cmpeq_epi16(LoadUnits(at + placeOfOne), one),
                                _mm256_cmpeq_epi16(LoadUnits(at + placeOfOther), other));
    }
};

template <class Lanes, class Wanted>
LUM_AVX2 const unsigned short* FindPlace(const unsigned short* first, const unsigned short* last,
                                         const Wanted& wanted) noexcept {
    constexpr std::ptrdiff_t stride = 4 * kStep;
    const Lanes lanes(wanted);
    while (last - first > stride) {
        const __m256i a = lanes.At(first);
        const __m256i b = lanes.At(first + kStep);
        const __m256i c = lanes.At(first + 2 * kStep);
        const __m256i d = lanes.At(first + 3 * kStep);
        if (_mm256_movemask_epi8(_mm256_or_si256(_mm256_or_si256(a, b), _mm256_or_si256(c, d))) != 0) {
            break;
        }
        first += stride;
    }
    for (; last - first > kStep; first += kStep) {
        if (const auto bits = static_cast<std::uint32_t>(_mm256_movemask_epi8(lanes.At(first))); bits != 0) {
            return first + Sse2::FirstLane(bits);
        }
    }
    const auto bits = static_cast<std::uint32_t>(_mm256_movemask_epi8(lanes.At(last - kStep)));
    return bits != 0 ? last - kStep + Sse2::FirstLane(bits) : nullptr;
}

inline const unsigned short* FindUnit(const unsigned short* first, const unsigned short* last,
                                      unsigned short unit) noexcept {
    return last - first < kStep ? Sse2::FindUnit(first, last, unit) : FindPlace<UnitLanes>(first, last, unit);
}

inline const unsigned short* FindPair(const unsigned short* first, const unsigned short* last,
                                      const UnitPair& pair) noexcept {
    return last - first < kStep ? Sse2::FindPair(first, last, pair) : FindPlace<PairLanes>(first, last, pair);
}

#undef LUM_AVX2

}  // namespace Lum::Avx2
