// Searches of 16-bit units with SSE2, which every 64-bit x86 processor has: eight units a step.
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

namespace Lum::Internal::Sse2 {

inline constexpr std::ptrdiff_t kStep = 8;

inline __m128i LoadUnits(const unsigned short* from) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}
inline __m128i Spread(unsigned short unit) noexcept { return _mm_set1_epi16(static_cast<short>(unit)); }

/// Two bits a lane.
inline std::uint32_t LaneBits(__m128i lanes) noexcept { return static_cast<std::uint32_t>(_mm_movemask_epi8(lanes)); }

/// Lanes of ones where the unit is the wanted one.
class UnitLanes {
public:
    explicit UnitLanes(unsigned short unit) noexcept : m_Wanted(Spread(unit)) {}
    [[nodiscard]] __m128i Candidates(const unsigned short* at) const noexcept {
        return _mm_cmpeq_epi16(LoadUnits(at), m_Wanted);
    }
    [[nodiscard]] __m128i Matches(const unsigned short* at) const noexcept { return Candidates(at); }

private:
    __m128i m_Wanted;
};

/// Lanes of ones where the marks stand at their offsets.
class MarkLanes {
public:
    explicit MarkLanes(const NeedleMarks& marks) noexcept : m_Marks(marks) {
        for (std::size_t i = 0; i < marks.Count(); ++i) {
            m_Units[i] = Spread(marks.Unit(i));
        }
    }
    /// For the first two marks.
    [[nodiscard]] __m128i Candidates(const unsigned short* at) const noexcept {
        return _mm_and_si128(ForMark(0, at), ForMark(1, at));
    }
    /// For all marks. How many are needed to rule a position out cannot be predicted: no branch depends on it.
    [[nodiscard]] __m128i Matches(const unsigned short* at) const noexcept {
        __m128i lanes = Candidates(at);
        for (std::size_t i = 2; i < m_Marks.Count(); ++i) {
            lanes = _mm_and_si128(lanes, ForMark(i, at));
        }
        return lanes;
    }

private:
    [[nodiscard]] __m128i ForMark(std::size_t i, const unsigned short* at) const noexcept {
        return _mm_cmpeq_epi16(LoadUnits(at + m_Marks.Offset(i)), m_Units[i]);
    }

    const NeedleMarks& m_Marks;
    __m128i m_Units[NeedleMarks::kMost];
};

/// One bit for each unit of four steps. Which of them is set cannot be predicted: no branch depends
/// on it.
template <class Lanes>
std::uint64_t StrideBits(const Lanes& lanes, const unsigned short* at) noexcept {
    const auto bits = [&](const unsigned short* pair) {
        return LaneBits(_mm_packs_epi16(lanes.Matches(pair), lanes.Matches(pair + kStep)));
    };
    return bits(at) | std::uint64_t{bits(at + 2 * kStep)} << 2 * kStep;
}

/// The first position in [first, last), at least a step, whose lane is set; or null.
template <class Lanes, class Wanted>
const unsigned short* FindLane(const unsigned short* first, const unsigned short* last, const Wanted& wanted) noexcept {
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
            const __m128i a = _mm_or_si128(lanes.Candidates(at), lanes.Candidates(at + kStep));
            const __m128i b = _mm_or_si128(lanes.Candidates(at + 2 * kStep), lanes.Candidates(at + 3 * kStep));
            if (LaneBits(_mm_or_si128(a, b)) != 0 && (bits = StrideBits(lanes, at)) != 0) {
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
    return last - first < kStep ? Plain::FindUnit(first, last, unit) : FindLane<UnitLanes>(first, last, unit);
}

inline const unsigned short* FindMarks(const unsigned short* first, const unsigned short* last,
                                       const NeedleMarks& marks) noexcept {
    return last - first < kStep ? Plain::FindMarks(first, last, marks) : FindLane<MarkLanes>(first, last, marks);
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
    // A lane counts at most this often before its sum would turn negative.
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

}  // namespace Lum::Internal::Sse2
