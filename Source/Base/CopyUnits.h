// Copies short runs of 16-bit units without a call and, for the lengths that words have, without a branch
// that depends on them: lengths cannot be foreseen.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "Source/Base/Block16.h"

namespace Lum {

/// Copies `count` units to `to`, where they do not overlap, and writes nothing behind them.
inline void CopyShortUnits(unsigned short* to, const unsigned short* from, std::size_t count) noexcept {
    constexpr std::size_t step = 8;
    const auto copy = [&](std::size_t at) {
        Block16::Load(reinterpret_cast<const char*>(from + at)).Store(reinterpret_cast<char*>(to + at));
    };
    if (count > 4 * step) {
        for (std::size_t at = 0; at < count - 2 * step; at += 2 * step) {
            copy(at);
            copy(at + step);
        }
        copy(count - 2 * step);
        copy(count - step);
    } else if (count >= step) {
        // Four steps that overlap where there are not as many.
        const std::size_t last = count - step;
        const std::size_t second = std::min(step, last);
        copy(0);
        copy(second);
        copy(last - second);
        copy(last);
    } else if (count >= 4) {
        std::memcpy(to, from, 4 * sizeof *to);
        std::memcpy(to + count - 4, from + count - 4, 4 * sizeof *to);
    } else if (count > 0) {
        to[0] = from[0];
        to[count / 2] = from[count / 2];
        to[count - 1] = from[count - 1];
    }
}

}  // namespace Lum
