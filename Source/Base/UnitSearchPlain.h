// Searches of 16-bit units in plain C++: the definition of what every faster variant answers.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace Lum::Internal {

/// The units of a needle that are compared first where it may stand, by their positions in it: at least two,
/// of which the first two are looked at everywhere, the others where those fit.
class NeedleMarks {
public:
    static constexpr std::size_t kMost = 8;

    /// The first and the last of the `size` units at `needle`.
    NeedleMarks(const unsigned short* needle, std::size_t size) noexcept : m_Needle(needle) {
        m_Offsets[0] = 0;
        m_Offsets[1] = size - 1;
    }

    [[nodiscard]] std::size_t Count() const noexcept { return m_Count; }
    [[nodiscard]] std::size_t Offset(std::size_t i) const noexcept { return m_Offsets[i]; }
    [[nodiscard]] unsigned short Unit(std::size_t i) const noexcept { return m_Needle[m_Offsets[i]]; }

    /// Puts a position that is none of them in front; the last is dropped where there are too many.
    void Add(std::size_t offset) noexcept {
        m_Count = std::min(m_Count + 1, kMost);
        std::copy_backward(m_Offsets.begin(), m_Offsets.begin() + m_Count - 1, m_Offsets.begin() + m_Count);
        m_Offsets[0] = offset;
    }

private:
    const unsigned short* m_Needle;
    std::size_t m_Count = 2;
    std::array<std::size_t, kMost> m_Offsets;  // set up to m_Count
};

namespace Plain {

inline const unsigned short* FindUnit(const unsigned short* first, const unsigned short* last,
                                      unsigned short unit) noexcept {
    for (; first != last; ++first) {
        if (*first == unit) {
            return first;
        }
    }
    return nullptr;
}

inline const unsigned short* FindLastUnit(const unsigned short* first, const unsigned short* last,
                                          unsigned short unit) noexcept {
    while (last != first) {
        if (*--last == unit) {
            return last;
        }
    }
    return nullptr;
}

/// The first position in [first, last) behind which all of `marks` stand at their offsets, or null. The units
/// up to these offsets behind `last` can be read, too.
inline const unsigned short* FindMarks(const unsigned short* first, const unsigned short* last,
                                       const NeedleMarks& marks) noexcept {
    for (; first != last; ++first) {
        std::size_t i = 0;
        while (i < marks.Count() && first[marks.Offset(i)] == marks.Unit(i)) {
            ++i;
        }
        if (i == marks.Count()) {
            return first;
        }
    }
    return nullptr;
}

inline std::size_t CountMatches(const unsigned short* first, const unsigned short* last, unsigned short unit) noexcept {
    std::size_t count = 0;
    for (; first != last; ++first) {
        count += *first == unit ? 1 : 0;
    }
    return count;
}

}  // namespace Plain

}  // namespace Lum::Internal
