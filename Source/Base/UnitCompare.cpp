// Picks what compares in this build.
#include "Source/Base/UnitCompare.h"

#include "Source/Base/UnitComparePlain.h"

namespace Lum {

std::size_t FirstDifference(const unsigned short* a, const unsigned short* b, std::size_t size) noexcept {
    return Plain::FirstDifference(a, b, size);
}

}  // namespace Lum
