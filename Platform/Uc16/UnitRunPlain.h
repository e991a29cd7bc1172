// Counts units up to an end, one at a step: the definition for the faster ways.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace Uc16 {

/// A unit of a caller's text, which may be an array of another 16-bit type.
using AnyUnit = unsigned short __attribute__((may_alias));

namespace Plain {

/// How many units stand before the first that is 0 or one of `ends`.
template <std::size_t kEnds>
std::size_t CountBefore(const AnyUnit* text, std::array<unsigned short, kEnds> ends) noexcept {
    std::size_t count = 0;
    while (text[count] != 0 && std::find(ends.begin(), ends.end(), text[count]) == ends.end()) {
        ++count;
    }
    return count;
}

}  // namespace Plain

}  // namespace Uc16
