// Compares runs of 16-bit units by their values.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#ifdef __SSE2__
#include "Source/Base/UnitCompareSse2.h"
namespace Lum {
/// The first place at which the two runs of `size` units differ, or `size`.
using Sse2::FirstDifference;
}  // namespace Lum
#else
#include "Source/Base/UnitComparePlain.h"
namespace Lum {
using Plain::FirstDifference;
}
#endif

namespace Lum {

inline bool EqualUnits(const unsigned short* a, const unsigned short* b, std::size_t size) noexcept {
    return size == 0 || std::memcmp(a, b, size * sizeof *a) == 0;
}

/// -1, 0 or 1 by the first two units that differ, then by length.
inline int CompareUnits(const unsigned short* a, std::size_t aSize, const unsigned short* b,
                        std::size_t bSize) noexcept {
    const std::size_t shared = std::min(aSize, bSize);
    if (const std::size_t at = FirstDifference(a, b, shared); at != shared) {
        return a[at] < b[at] ? -1 : 1;
    }
    return aSize == bSize ? 0 : (aSize < bSize ? -1 : 1);
}

}  // namespace Lum
