// Two units of a needle and where they stand in it, by which the places where it may stand are found.
#pragma once

#include <cstddef>

namespace Lum {

struct UnitPair {
    unsigned short one;
    unsigned short other;
    std::size_t placeOfOne;
    std::size_t placeOfOther;
};

}  // namespace Lum
