// Where the memory of a string's buffer comes from, by its size class.
#pragma once

#include <Lum/CString.h>

#include <bit>
#include <cstddef>

namespace Lum {

/// 0 to 3 for room for 64, 128, 256 and 512 units; above that a buffer has exactly the room asked for.
/// `length` is positive.
inline int SizeClassOf(int length) noexcept {
    return static_cast<int>(std::bit_width(static_cast<unsigned int>(length - 1) >> 6));
}
inline constexpr int kSizeClasses = 4;
constexpr int CapacityOfClass(int sizeClass) noexcept { return 64 << sizeClass; }

/// Header, units and the 0 behind them.
constexpr std::size_t BytesFor(int capacity) noexcept {
    return sizeof(CStringData) + (static_cast<std::size_t>(capacity) + 1) * sizeof(unsigned short);
}

}  // namespace Lum

#ifdef LUM_NO_POOLS
#include "cstring/BufferHeap.h"
#else
#include "cstring/BufferPools.h"
#endif
