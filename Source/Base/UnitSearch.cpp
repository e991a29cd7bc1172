// Picks what searches on this processor, and finds whole runs with it.
#include "Source/Base/UnitSearch.h"

#include "Source/Base/TwoWay.h"
#include "Source/Base/UnitCompare.h"
#include "Source/Base/UnitKernel.h"

namespace Lum {
namespace {

/// Looks for two units of a needle and compares the whole where both stand.
///
/// The two are the first and the last of the needle until a place with both turns out to be none of its
/// places: from then on the unit that gave it away is looked for, in place of the elder of the two. A
/// text full of things that are nearly the needle is soon passed without a comparison.
class PairSearch {
public:
    PairSearch(const unsigned short* needle, std::size_t size) noexcept
        : m_Needle(needle), m_Size(size), m_Pair{needle[0], needle[size - 1], 0, size - 1} {}

    /// Where the needle first stands in [first, last), which is at least as long, or null.
    [[nodiscard]] const unsigned short* Find(const unsigned short* first, const unsigned short* last) noexcept {
        const unsigned short* const stop = last - m_Size + 1;
        const UnitKernel& kernel = FastestUnitKernel();
        std::size_t effort = 0;
        for (const unsigned short* at = first; (at = kernel.findPair(at, stop, m_Pair)) != nullptr; ++at) {
            const std::size_t difference = FirstDifference(at, m_Needle, m_Size);
            if (difference == m_Size) {
                return at;
            }
            effort += difference + kEffortOfComparing;
            if (effort > kFreeEffort + kEffortPerUnit * static_cast<std::size_t>(at - first)) {
                return TwoWay(m_Needle, m_Size).Find(at + 1, last);
            }
            m_Pair = {m_Pair.other, m_Needle[difference], m_Pair.placeOfOther, difference};
        }
        return nullptr;
    }

private:
    // In units compared. As long as no more than this is spent on places that are none, the search is
    // linear; beyond it, one that is slower but always linear takes over.
    static constexpr std::size_t kEffortOfComparing = 16;
    static constexpr std::size_t kEffortPerUnit = 4;
    static constexpr std::size_t kFreeEffort = 4096;

    const unsigned short* m_Needle;
    std::size_t m_Size;
    UnitPair m_Pair;
};

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
    return size == 1 ? FindUnit(first, last, *needle) : PairSearch(needle, size).Find(first, last);
}

}  // namespace Lum
