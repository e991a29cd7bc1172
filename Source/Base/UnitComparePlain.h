// Compares 16-bit units in plain C++: the definition of what every faster variant answers.
#pragma once

#include <cstddef>

namespace Lum::Plain {

inline std::size_t FirstDifference(const unsigned short* a, const unsigned short* b, std::size_t size) noexcept {
    std::size_t at = 0;
    while (at < size && a[at] == b[at]) {
        ++at;
    }
    return at;
}

}  // namespace Lum::Plain
