// Sixteen bytes in plain C++, and the ranges that they are compared with: the definition of what every
// faster Block16 answers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Lum::Internal {

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

/// Up to 16 bytes as two numbers, the first byte lowest, with zeros behind them; for machines that are
/// little-endian. Put together in registers from loads that overlap: a block put together in memory would have to
/// wait for all the small stores.
struct WordPair {
    std::uint64_t low = 0;
    std::uint64_t high = 0;
};
inline WordPair ShortWords(const char* from, std::size_t size) noexcept {
    const auto word = [from](auto value, std::size_t at) {
        std::memcpy(&value, from + at, sizeof value);
        return std::uint64_t{value};
    };
    if (size >= 8) {
        const std::uint64_t high = word(std::uint64_t{}, size - 8);
        return {word(std::uint64_t{}, 0), size >= 16 ? high : high >> (8 * (15 - size)) >> 8};
    }
    if (size >= 4) {
        return {word(std::uint32_t{}, 0) | word(std::uint32_t{}, size - 4) << (8 * (size - 4)), 0};
    }
    if (size > 0) {
        const auto byte = [&](std::size_t i) { return word(static_cast<unsigned char>(0), i) << (8 * i); };
        return {byte(0) | byte(size / 2) | byte(size - 1), 0};
    }
    return {};
}

namespace Plain {

class Block16 {
public:
    static Block16 Load(const char* from) noexcept {
        Block16 block;
        std::memcpy(block.m_Bytes.data(), from, block.m_Bytes.size());
        return block;
    }
    /// A block from `size` bytes, at most 16, with NULs behind them.
    static Block16 LoadShort(const char* from, std::size_t size) noexcept {
        Block16 block;
        block.m_Bytes = {};
        for (std::size_t i = 0; i < size; ++i) {
            block.m_Bytes[i] = static_cast<unsigned char>(from[i]);
        }
        return block;
    }
    void Store(char* to) const noexcept { std::memcpy(to, m_Bytes.data(), m_Bytes.size()); }

    /// Bit i tells whether byte i equals `c`.
    [[nodiscard]] std::uint32_t Equals(char c) const noexcept {
        return InRange(static_cast<unsigned char>(c), static_cast<unsigned char>(c));
    }
    /// Bit i tells whether byte i equals one of `Wanted`.
    template <char... Wanted>
    [[nodiscard]] std::uint32_t EqualsAny() const noexcept {
        return (Equals(Wanted) | ...);
    }
    /// Bit i tells whether byte i, taken unsigned, lies in [low, high]; `low` <= `high`.
    [[nodiscard]] std::uint32_t InRange(unsigned char low, unsigned char high) const noexcept {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < m_Bytes.size(); ++i) {
            bits |= static_cast<std::uint32_t>(m_Bytes[i] >= low && m_Bytes[i] <= high) << i;
        }
        return bits;
    }
    /// Bit i tells whether byte i lies in one of `ranges`.
    template <std::size_t N>
    [[nodiscard]] std::uint32_t InAnyRange(const ByteRanges<N>& ranges) const noexcept {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < N; ++i) {
            const unsigned char low = ranges.low[i][0];
            bits |= InRange(low, static_cast<unsigned char>(low + ranges.width[i][0]));
        }
        return bits;
    }
    /// Bit i tells whether byte i is an ASCII letter.
    [[nodiscard]] std::uint32_t Letters() const noexcept { return InRange('A', 'Z') | InRange('a', 'z'); }

private:
    std::array<unsigned char, 16> m_Bytes;
};

}  // namespace Plain

}  // namespace Lum::Internal
