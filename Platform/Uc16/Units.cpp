// Spans over sets of units, and copies. Sets of up to four units are compared with directly, so that a caller
// that cuts a text into short pieces does not pay for a table.
#include <array>
#include <cstdint>
#include <cstring>

#include "Platform/Uc16/Uc16.h"
#include "Source/Base/UnitText.h"

using namespace Lum::Internal;

namespace {

bool IsListed(const unsigned short* set, unsigned short unit) {
    while (*set != 0 && *set != unit) {
        ++set;
    }
    return *set != 0;
}

/// A set as one bit for each low byte of its members. If a member is above 255, a set bit only means that the
/// list has to be searched.
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
    // Mostly the first unit is not in the set, and a table would cost more than it saves. From here on the set is
    // not empty.
    if (!IsListed(set, *text)) {
        return 0;
    }
    if (set[1] == 0) {
        return Until(text, [unit = *set](unsigned short other) { return other != unit; });
    }
    const SetMap map(set);
    return Until(text, [&](unsigned short unit) { return !map.Contains(unit); });
}

std::size_t uc16_wcscspn(const unsigned short* text, const unsigned short* set) {
    if (set[0] == 0 || set[1] == 0) {
        return CountBefore<1>(text, {set[0]});
    }
    if (set[2] == 0) {
        return CountBefore<2>(text, {set[0], set[1]});
    }
    if (set[3] == 0 || set[4] == 0) {
        // A set of three has its last unit twice.
        return CountBefore<4>(text, {set[0], set[1], set[2], set[3] != 0 ? set[3] : set[2]});
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
