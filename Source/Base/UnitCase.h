// Case of 16-bit units in place, as ASCII has it: units from 0x80, and all that are no letters, stay.
#pragma once

#include <cstddef>

namespace Lum {

/// Turns "a" to "z" among the `size` units at `units` into "A" to "Z".
void ToAsciiUpper(unsigned short* units, std::size_t size) noexcept;

/// Turns "A" to "Z" among the `size` units at `units` into "a" to "z".
void ToAsciiLower(unsigned short* units, std::size_t size) noexcept;

}  // namespace Lum
