// Reads the two characters behind a "%": the lenient rules, and the table for what is met in practice.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Lum {

/// What one escape gives: the byte, and how many of its three characters it takes (3, or 1 if the
/// "%" stands for itself).
struct HexEscape {
    char byte;
    std::uint8_t length;
};

inline constexpr std::int8_t kNoDigit = -1;

/// The value of each hexadecimal digit, kNoDigit for every other byte.
inline constexpr std::array<std::int8_t, 256> kHexValues = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::int8_t i = 0; i < 16; ++i) {
        values[static_cast<unsigned char>("0123456789ABCDEF"[i])] = i;
        values[static_cast<unsigned char>("0123456789abcdef"[i])] = i;
    }
    return values;
}();

constexpr int HexValue(char c) noexcept { return kHexValues[static_cast<unsigned char>(c)]; }

/// Reads "%`first``second`" as sscanf's "%x" reads the two characters in the "C" locale: white
/// space, a sign and "0x" may lead, and reading stops at the first character that is no digit. What
/// ends before a digit could come (white space only, or a NUL) gives the byte 0.
constexpr HexEscape ScanHex(char first, char second) noexcept {
    constexpr HexEscape none{'%', 1};
    const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    const int high = HexValue(first);
    const int low = HexValue(second);
    if (high != kNoDigit) {
        // "0x" has its digits still to come, which leaves the 0 that was read.
        return {static_cast<char>(low == kNoDigit ? high : high * 16 + low), 3};
    }
    if (first == '\0') {
        return {'\0', 3};
    }
    if (isSpace(first)) {
        if (low != kNoDigit) {
            return {static_cast<char>(low), 3};
        }
        return isSpace(second) || second == '\0' ? HexEscape{'\0', 3} : none;
    }
    if ((first == '+' || first == '-') && low != kNoDigit) {
        return {static_cast<char>(first == '-' ? -low : low), 3};
    }
    return none;
}

/// Reads one escape from its three characters. Spaces are squeezed out to the left first, while the
/// places left over at the end keep what they held: "% 4" reads as "%44", and "%4 " as it stands.
/// Deliberate: texts that were broken and padded with spaces are read this way.
constexpr HexEscape ReadEscape(std::array<char, 3> triple) noexcept {
    std::size_t kept = 0;
    for (const char c : triple) {
        if (c != ' ') {
            triple[kept++] = c;
        }
    }
    return triple[0] == '%' ? ScanHex(triple[1], triple[2]) : HexEscape{triple[0], 1};
}

static_assert(ReadEscape({'%', ' ', '4'}).byte == '\x44' && ReadEscape({'%', '4', 'G'}).byte == '\x04');

}  // namespace Lum
