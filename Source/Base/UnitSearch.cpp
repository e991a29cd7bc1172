// Picks the searches for this processor, and finds whole runs with them.
#include "Source/Base/UnitSearch.h"

#include "Source/Base/Cpu.h"
#include "Source/Base/TwoWay.h"
#include "Source/Base/UnitSearchPlain.h"
#ifdef __SSE2__
#include "Source/Base/UnitSearchAvx2.h"
#include "Source/Base/UnitSearchSse2.h"
#endif

namespace Lum::Internal {
namespace {

/// The searches that exist in more than one variant.
struct UnitKernel {
    decltype(&Plain::FindUnit) findUnit;
    decltype(&Plain::FindLastUnit) findLastUnit;
    decltype(&Plain::FindMarks) findMarks;
    decltype(&Plain::CountMatches) countMatches;
};

constexpr UnitKernel kPlainUnits{Plain::FindUnit, Plain::FindLastUnit, Plain::FindMarks, Plain::CountMatches};

#ifdef __SSE2__
constexpr UnitKernel kSse2Units{Sse2::FindUnit, Sse2::FindLastUnit, Sse2::FindMarks, Sse2::CountMatches};
constexpr UnitKernel kAvx2Units{Avx2::FindUnit, Sse2::FindLastUnit, Avx2::FindMarks, Sse2::CountMatches};

const UnitKernel& FastestUnitKernel() noexcept {
    const CpuTier cpu = UsedCpu();
    return cpu >= CpuTier::kAvx2 ? kAvx2Units : cpu >= CpuTier::kSse2 ? kSse2Units : kPlainUnits;
}
#else
const UnitKernel& FastestUnitKernel() noexcept { return kPlainUnits; }
#endif

/// Where a needle of `size` units, at least 2, first stands in [first, last), which is no shorter; or null.
///
/// Looks for a few of its units, to begin with its first and its last, and compares the whole needle only where
/// these fit. A unit that differs then joins the few, so that a text full of near matches soon needs no
/// comparisons.
const unsigned short* FindByMarks(const unsigned short* first, const unsigned short* last, const unsigned short* needle,
                                  std::size_t size) noexcept {
    // All counted in units compared. While false candidates cost no more than `free` and `mostPerUnit` for each
    // unit passed, the search is linear. Then TwoWay takes over, which is slower, but linear whatever the text.
    constexpr std::size_t perCandidate = 16;
    constexpr std::size_t mostPerUnit = 4;
    const std::size_t free = 4096 + mostPerUnit * size;

    const auto findMarks = FastestUnitKernel().findMarks;
    const unsigned short* const stop = last - size + 1;
    NeedleMarks marks(needle, size);
    std::size_t effort = 0;
    for (const unsigned short* at = first; (at = findMarks(at, stop, marks)) != nullptr; ++at) {
        const std::size_t difference = FirstDifference(at, needle, size);
        if (difference == size) {
            return at;
        }
        effort += difference + perCandidate;
        if (effort > free + mostPerUnit * static_cast<std::size_t>(at - first)) {
            return TwoWay(needle, size).Find(at + 1, last);
        }
        marks.Add(difference);
    }
    return nullptr;
}

}  // namespace

const unsigned short* FindUnit(const unsigned short* first, const unsigned short* last, unsigned short unit) noexcept {
    return FastestUnitKernel().findUnit(first, last, unit);
}

const unsigned short* FindLastUnit(const unsigned short* first, const unsigned short* last,
                                   unsigned short unit) noexcept {
    return FastestUnitKernel().findLastUnit(first, last, unit);
}

std::size_t CountMatches(const unsigned short* first, const unsigned short* last, unsigned short unit) noexcept {
    return FastestUnitKernel().countMatches(first, last, unit);
}

const unsigned short* FindUnits(const unsigned short* first, const unsigned short* last, const unsigned short* needle,
                                std::size_t size) noexcept {
    if (size == 0) {
        return first;
    }
    if (size > static_cast<std::size_t>(last - first)) {
        return nullptr;
    }
    return size == 1 ? FindUnit(first, last, *needle) : FindByMarks(first, last, needle, size);
}

}  // namespace Lum::Internal
