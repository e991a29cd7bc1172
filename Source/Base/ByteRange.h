// Ranges of byte values, in the form in which blocks are compared with them.
#pragma once

#include <array>
#include <cstddef>

namespace Lum {

/// A closed range of byte values, taken unsigned; `low` <= `high`.
struct ByteRange {
    unsigned char low = 0;
    unsigned char high = 0;
};

/// Ranges spread to the width of a block, so that a comparison loads them as they are.
template <std::size_t N>
struct ByteRanges {
    using Lanes = std::array<unsigned char, 16>;

    constexpr ByteRanges() noexcept = default;
    constexpr explicit ByteRanges(const std::array<ByteRange, N>& ranges) noexcept {
        for (std::size_t i = 0; i < N; ++i) {
            low[i].fill(ranges[i].low);
            width[i].fill(static_cast<unsigned char>(ranges[i].high - ranges[i].low));
        }
    }

    alignas(16) std::array<Lanes, N> low{};
    alignas(16) std::array<Lanes, N> width{};  ///< The range's last value less its first.
};

}  // namespace Lum
