// A set of byte values: 256 bits, made at compile time from the text that lists the members.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace Lum::Internal {

/// Byte c is a member when bit (c mod 8) of byte (c div 8) is set.
class CharBitMap {
public:
    constexpr CharBitMap() noexcept = default;
    constexpr explicit CharBitMap(std::string_view members) noexcept {
        for (const char c : members) {
            Add(c);
        }
    }
    constexpr void Add(char c) noexcept {
        const auto value = static_cast<unsigned char>(c);
        m_Bytes[value / 8] = static_cast<std::uint8_t>(m_Bytes[value / 8] | (1U << (value % 8)));
    }

    [[nodiscard]] constexpr bool Contains(unsigned char c) const noexcept {
        return ((m_Bytes[c / 8] >> (c % 8)) & 1U) != 0;
    }

private:
    std::array<std::uint8_t, 32> m_Bytes{};
};

static_assert(sizeof(CharBitMap) == 32);

}  // namespace Lum::Internal
