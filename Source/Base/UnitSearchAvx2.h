// Searches of 16-bit units with AVX2, sixteen units a step. Built as those with SSE2, which do the short
// runs.
#pragma once

#include <immintrin.h>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Source/Base/UnitSearchSse2.h"

namespace Lum::Internal::Avx2 {

inline constexpr std::ptrdiff_t kStep = 16;

#define LUM_AVX2 __attribute__((target("avx2")))  // NOLINT(cppcoreguidelines-macro-usage): an attribute

LUM_AVX2 inline __m256i LoadUnits(const unsigned short* from) noexcept {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}
LUM_AVX2 inline __m256i Spread(unsigned short unit) noexcept { return _mm256_set1_epi16(static_cast<short>(unit)); }
LUM_AVX2 inline std::uint32_t LaneBits(__m256i lanes) noexcept {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(lanes));
}

/// Lanes of ones where the unit is the wanted one.
class UnitLanes {
public:
    LUM_AVX2 explicit UnitLanes(unsigned short unit) noexcept : m_Wanted(Spread(unit)) {}
    [[nodiscard]] LUM_AVX2 __m256i Candidates(const unsigned short* at) const noexcept {
        return _mm256_cmpeq_epi16(LoadUnits(at), m_Wanted);
    }
    [[nodiscard]] LUM_AVX2 __m256i Matches(const unsigned short* at) const noexcept { return Candidates(at); }

private:
    __m256i m_Wanted;
};

/// Lanes of ones where the marks stand at their offsets.
class MarkLanes {
public:
    LUM_AVX2 explicit MarkLanes(const NeedleMarks& marks) noexcept : m_Marks(marks) {
        for (std::size_t i = 0; i < marks.Count(); ++i) {
            m_Units[i] = Spread(marks.Unit(i));
        }
    }
    /// For the first two marks.
    [[nodiscard]] LUM_AVX2 __m256i Candidates(const unsigned short* at) const noexcept {
        return _mm256_and_si256(ForMark(0, at), ForMark(1, at));
    }
    /// For all marks. How many are needed to rule a position out cannot be predicted: no branch depends on it.
    [[nodiscard]] LUM_AVX2 __m256i Matches(const unsigned short* at) const noexcept {
        __m256i lanes = Candidates(at);
        for (std::size_t i = 2; i < m_Marks.Count(); ++i) {
            lanes = _mm256_and_si256(lanes, ForMark(i, at));
        }
        return lanes;
    }

private:
    [[nodiscard]] LUM_AVX2 __m256i ForMark(std::size_t i, const unsigned short* at) const noexcept {
        return _mm256_cmpeq_epi16(LoadUnits(at + m_Marks.Offset(i)), m_Units[i]);
    }

    const NeedleMarks& m_Marks;
    __m256i m_Units[NeedleMarks::kMost];
};

/// One bit for each unit of two steps.
template <class Lanes>
LUM_AVX2 std::uint64_t PairBits(const Lanes& lanes, const unsigned short* at) noexcept {
    // Packing interleaves the halves of both steps; the permutation puts them in order.
    const __m256i packed = _mm256_packs_epi16(lanes.Matches(at), lanes.Matches(at + kStep));
    return LaneBits(_mm256_permute4x64_epi64(packed, 0b11'01'10'00));
}

/// One bit for each unit of four steps. Which of them is set cannot be predicted: no branch depends
/// on it.
template <class Lanes>
LUM_AVX2 std::uint64_t StrideBits(const Lanes& lanes, const unsigned short* at) noexcept {
    return PairBits(lanes, at) | PairBits(lanes, at + 2 * kStep) << 2 * kStep;
}

/// The first position in [first, last), at least a step, whose lane is set; or null.
template <class Lanes, class Wanted>
LUM_AVX2 const unsigned short* FindLane(const unsigned short* first, const unsigned short* last,
                                        const Wanted& wanted) noexcept {
    constexpr std::ptrdiff_t stride = 4 * kStep;
    const Lanes lanes(wanted);
    const unsigned short* at = first;
    if (last - first < stride) {
        for (; last - at > kStep; at += kStep) {
            if (const auto bits = LaneBits(lanes.Matches(at)); bits != 0) {
                return at + std::countr_zero(bits) / 2;
            }
        }
        const auto bits = LaneBits(lanes.Matches(last - kStep));
        return bits != 0 ? last - kStep + std::countr_zero(bits) / 2 : nullptr;
    }
    std::uint64_t bits = StrideBits(lanes, at);
    if (bits == 0) {
        // Go on from an address at which no load crosses a cache line.
        at += stride - static_cast<std::ptrdiff_t>(reinterpret_cast<std::uintptr_t>(at) / sizeof *at % kStep);
        for (; bits == 0 && last - at > stride; at += stride) {
            const __m256i a = _mm256_or_si256(lanes.Candidates(at), lanes.Candidates(at + kStep));
            const __m256i b = _mm256_or_si256(lanes.Candidates(at + 2 * kStep), lanes.Candidates(at + 3 * kStep));
            if (LaneBits(_mm256_or_si256(a, b)) != 0 && (bits = StrideBits(lanes, at)) != 0) {
                break;
            }
        }
        if (bits == 0) {
            at = last - stride;
            bits = StrideBits(lanes, at);
        }
    }
    return bits != 0 ? at + std::countr_zero(bits) : nullptr;
}

inline const unsigned short* FindUnit(const unsigned short* first, const unsigned short* last,
                                      unsigned short unit) noexcept {
    return last - first < kStep ? Sse2::FindUnit(first, last, unit) : FindLane<UnitLanes>(first, last, unit);
}

inline const unsigned short* FindMarks(const unsigned short* first, const unsigned short* last,
                                       const NeedleMarks& marks) noexcept {
    return last - first < kStep ? Sse2::FindMarks(first, last, marks) : FindLane<MarkLanes>(first, last, marks);
}

#undef LUM_AVX2

}  // namespace Lum::Internal::Avx2
