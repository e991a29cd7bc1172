// Case of 16-bit units in plain C++: the definition of what every faster variant gives.
#pragma once

#include <cstddef>

namespace Lum::Plain {

/// Turns each of the 26 letters from `first` on into its other case.
inline void SwapCase(unsigned short* units, std::size_t size, unsigned short first) noexcept {
    for (std::size_t i = 0; i < size; ++i) {
        const bool isLetter = units[i] >= first && units[i] < first + 26;
        units[i] = static_cast<unsigned short>(units[i] ^ (isLetter ? 0x20U : 0U));
    }
}

}  // namespace Lum::Plain
