// Searches of 16-bit units in plain C++: the definition of what every faster variant answers.
#pragma once

#include <cstddef>

#include "Source/Base/UnitPair.h"

namespace Lum::Plain {

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

/// The first place in [first, last) with both units of `pair` at their distances from it, or null. All
/// these distances behind `last` can be read, too.
inline const unsigned short* FindPair(const unsigned short* first, const unsigned short* last,
                                      const UnitPair& pair) noexcept {
    for (; first != last; ++first) {
        if (first[pair.placeOfOne] == pair.one && first[pair.placeOfOther] == pair.other) {
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

inline std::size_t CountUnits(const unsigned short* text) noexcept {
    const unsigned short* end = text;
    while (*end != 0) {
        ++end;
    }
    return static_cast<std::size_t>(end - text);
}

}  // namespace Lum::Plain
