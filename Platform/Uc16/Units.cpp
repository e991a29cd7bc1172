// Spans over sets of units, and copies. Sets of one and two units, which separate most texts, are plain
// comparisons: a caller that cuts a text into short pieces pays for no table.
#include <array>
#include <cstdint>
#include <cstring>

#include "Platform/Uc16/Uc16.h"

namespace {

bool IsListed(const unsigned short* set, unsigned short unit) {
    while (*set != 0 && *set != unit) {
        ++set;
    }
    return *set != 0;
}

/// A set as one bit for each low byte of its members. Where a member lies above the first 256 units, the
/// bit only says that it is worth to read the list.
class SetMap {
public:
    explicit SetMap(const unsigned short* set) : m_Set(set) {
        for (; *set != 0; ++set) {
            m_Bits[*set % 256U / 64] |= Bit(*set);
            m_HasOnlyBytes &= *set < 256;
        }
    }
    [[nodiscard]] bool Contains(unsigned short unit) const {
        return (m_Bits[unit % 256U / 64] & Bit(unit)) != 0 && ((m_HasOnlyBytes && unit < 256) || IsListed(m_Set, unit));
    }

private:
    static std::uint64_t Bit(unsigned short unit) { return std::uint64_t{1} << (unit % 64U); }

    std::array<std::uint64_t, 4> m_Bits{};
    const unsigned short* m_Set;
    bool m_HasOnlyBytes = true;
};

/// How many units come before the first for which `ends` holds.
template <class Condition>
std::size_t Until(const unsigned short* text, Condition ends) {
    const unsigned short* at = text;
    while (!ends(*at)) {
        ++at;
    }
    return static_cast<std::size_t>(at - text);
}

}  // namespace

std::size_t uc16_wcsspn(const unsigned short* text, const unsigned short* set) {
    // Mostly no unit is in the set, and no table worth its making. From here on the set is not empty.
    if (!IsListed(set, *text)) {
        return 0;
    }
    const unsigned short first = set[0];
    const unsigned short second = set[1];
    if (second == 0) {
        return Until(text, [=](unsigned short unit) { return unit != first; });
    }
    if (set[2] == 0) {
        return Until(text, [=](unsigned short unit) { return unit != first && unit != second; });
    }
    const SetMap map(set);
    return Until(text, [&](unsigned short unit) { return !map.Contains(unit); });
}

std::size_t uc16_wcscspn(const unsigned short* text, const unsigned short* set) {
    const unsigned short first = set[0];
    if (first == 0 || set[1] == 0) {
        return Until(text, [=](unsigned short unit) { return unit == first || unit == 0; });
    }
    const unsigned short second = set[1];
    if (set[2] == 0) {
        return Until(text, [=](unsigned short unit) { return unit == first || unit == second || unit == 0; });
    }
    const SetMap map(set);
    return Until(text, [&](unsigned short unit) { return unit == 0 || map.Contains(unit); });
}

const unsigned short* uc16_wcspbrk(const unsigned short* text, const unsigned short* set) {
    const unsigned short* const found = text + uc16_wcscspn(text, set);
    return *found == 0 ? nullptr : found;
}

unsigned short* uc16_wmemcpy(unsigned short* to, const unsigned short* from, std::size_t units) {
    if (units > 0) {
        std::memcpy(to, from, units * sizeof(unsigned short));
    }
    return to;
}
