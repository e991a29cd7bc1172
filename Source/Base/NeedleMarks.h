// The units of a needle that are looked at first where it may stand.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace Lum {

/// Places in a needle, at least two; the first two are looked at everywhere, the others where those fit.
class NeedleMarks {
public:
    static constexpr std::size_t kMost = 8;

    /// The first and the last of the `size` units at `needle`.
    NeedleMarks(const unsigned short* needle, std::size_t size) noexcept : m_Needle(needle) {
        m_Places[0] = 0;
        m_Places[1] = size - 1;
    }

    [[nodiscard]] std::size_t Count() const noexcept { return m_Count; }
    [[nodiscard]] std::size_t Place(std::size_t i) const noexcept { return m_Places[i]; }
    [[nodiscard]] unsigned short Unit(std::size_t i) const noexcept { return m_Needle[m_Places[i]]; }

    /// Puts a place that is none of them in front; the last is given up where there are too many.
    void Add(std::size_t place) noexcept {
        m_Count = std::min(m_Count + 1, kMost);
        std::copy_backward(m_Places.begin(), m_Places.begin() + m_Count - 1, m_Places.begin() + m_Count);
        m_Places[0] = place;
    }

private:
    const unsigned short* m_Needle;
    std::size_t m_Count = 2;
    std::array<std::size_t, kMost> m_Places;  // set up to m_Count
};

}  // namespace Lum
