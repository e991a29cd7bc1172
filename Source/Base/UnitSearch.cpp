// Picks what searches on this processor, and finds whole runs with it.
#include "Source/Base/UnitSearch.h"

#include "Source/Base/TwoWay.h"
#include "Source/Base/UnitCompare.h"
#include "Source/Base/UnitKernel.h"

namespace Lum {
namespace {

/// Where a needle of `size` units, at least 2, first stands in [first, last), which is no shorter; or null.
///
/// Looks for a few of its units, at first its first and its last, and compares the whole where they fit.
/// The unit that shows a place to be none is looked for from then on: a text full of what is nearly the
/// needle is soon passed without a comparison.
const unsigned short* FindByMarks(const unsigned short* first, const unsigned short* last, const unsigned short* needle,
                                  std::size_t size) noexcept {
    // In units compared. While places that are none cost no more than this, the search is linear; then
    // one takes over that is slower, but linear whatever the text.
    constexpr std::size_t ofPlace = 16;
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
        effort += difference + ofPlace;
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

}  // namespace Lum
