// Finds a run of units in another in linear time and constant space, by Crochemore and Perrin's
// "Two-way string-matching" (Journal of the ACM 38, 1991).
//
// The needle is divided where its right part cannot have begun before: a difference found in the right
// part, read forwards, allows a jump behind it, and one in the left part a jump by the needle's period.
#pragma once

#include <algorithm>
#include <cstddef>

namespace Lum::Internal {

class TwoWay {
public:
    /// For the `size` units at `needle`, at least 1, which must stay where they are.
    TwoWay(const unsigned short* needle, std::size_t size) noexcept : m_Needle(needle), m_Size(size) {
        const Suffix ascending = MaximalSuffix(false);
        const Suffix descending = MaximalSuffix(true);
        const Suffix& later = ascending.start > descending.start ? ascending : descending;
        m_Cut = later.start;
        m_IsPeriodic = std::equal(needle, needle + m_Cut, needle + later.period);
        // A needle without a period that helps has none up to the longer of its parts.
        m_Period = m_IsPeriodic ? later.period : std::max(m_Cut, size - m_Cut) + 1;
    }

    /// Where the needle first stands in [first, last), or null.
    [[nodiscard]] const unsigned short* Find(const unsigned short* first, const unsigned short* last) const noexcept {
        // So many of the needle's first units are known to match, from before the last jump.
        std::size_t known = 0;
        while (static_cast<std::size_t>(last - first) >= m_Size) {
            std::size_t i = std::max(m_Cut, known);
            while (i < m_Size && m_Needle[i] == first[i]) {
                ++i;
            }
            if (i < m_Size) {
                first += i - m_Cut + 1;
                known = 0;
                continue;
            }
            i = m_Cut;
            while (i > known && m_Needle[i - 1] == first[i - 1]) {
                --i;
            }
            if (i <= known) {
                return first;
            }
            if (static_cast<std::size_t>(last - first) - m_Size < m_Period) {
                break;
            }
            first += m_Period;
            known = m_IsPeriodic ? m_Size - m_Period : 0;
        }
        return nullptr;
    }

private:
    struct Suffix {
        std::size_t start;
        std::size_t period;
    };

    /// The greatest suffix by the units' values, or by their reverse, and its period.
    [[nodiscard]] Suffix MaximalSuffix(bool reversed) const noexcept {
        std::size_t start = 0;
        std::size_t rival = 1;
        std::size_t matched = 0;
        std::size_t period = 1;
        while (rival + matched < m_Size) {
            const unsigned short ofRival = m_Needle[rival + matched];
            const unsigned short ofBest = m_Needle[start + matched];
            if (ofRival == ofBest) {
                if (++matched == period) {
                    rival += period;
                    matched = 0;
                }
            } else if ((ofRival < ofBest) != reversed) {
                rival += matched + 1;
                matched = 0;
                period = rival - start;
            } else {
                start = rival++;
                matched = 0;
                period = 1;
            }
        }
        return {start, period};
    }

    const unsigned short* m_Needle;
    std::size_t m_Size;
    std::size_t m_Cut;
    std::size_t m_Period;
    bool m_IsPeriodic;
};

}  // namespace Lum::Internal
