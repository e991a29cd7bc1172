// Picks what changes case in this build.
#include "Source/Base/UnitCase.h"

#include "Source/Base/UnitCasePlain.h"

namespace Lum {

void ToAsciiUpper(unsigned short* units, std::size_t size) noexcept { Plain::SwapCase(units, size, 'a'); }

void ToAsciiLower(unsigned short* units, std::size_t size) noexcept { Plain::SwapCase(units, size, 'A'); }

}  // namespace Lum
