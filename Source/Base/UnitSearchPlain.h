// Searches of 16-bit units in plain C++: the definition of what every faster variant answers.
#pragma once

#include <cstddef>

#include "Source/Base/NeedleMarks.h"

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

/// The first place in [first, last) where all of `marks` stand at their distances, or null. The units up
/// to these distances behind `last` can be read, too.
inline const unsigned short* FindMarks(const unsigned short* first, const unsigned short* last,
                                       const NeedleMarks& marks) noexcept {
    for (; first != last; ++first) {
        std::size_t i = 0;
        while (i < marks.Count() && first[marks.Place(i)] == marks.Unit(i)) {
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

inline std::size_t CountUnits(const unsigned short* text) noexcept {
    const unsigned short* end = text;
    while (*end != 0) {
        ++end;
    }
    return static_cast<std::size_t>(end - text);
}

}  // namespace Lum::Plain
