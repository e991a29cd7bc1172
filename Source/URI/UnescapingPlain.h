// Reads one escape by the lenient rules, and decodes a text's escapes in place in plain C++. This is the
// definition that every faster variant must agree with.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "Source/Base/Block16.h"

namespace Lum::Internal {

/// The byte that an escape stands for, and how many of its three characters it takes: 3, or 1 if the "%" stands
/// for itself.
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

/// Reads the two characters behind a "%" as sscanf's "%x" does in the "C" locale: white space, a sign and "0x"
/// may come first, and reading stops at the first character that is no digit. If the text ends before a digit
/// (only white space, or a NUL), the byte is 0.
constexpr HexEscape ScanHex(char first, char second) noexcept {
    constexpr HexEscape none{'%', 1};
    const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    const int high = HexValue(first);
    const int low = HexValue(second);
    if (high != kNoDigit) {
        // No digit follows in "0x", so that only the 0 is read.
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

/// Reads one escape from its three characters. Other characters first move to the left over spaces, and the
/// positions at the end keep what they held: "% 4" is read as "%44", and "%4 " as it is.
/// Compatibility: readers of texts that were broken into lines and padded with spaces rely on it.
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

/// Decodes the escapes from `first` to `end` in place and returns the new end. Reads and writes nothing outside.
using UnescapeFunction = char* (*)(char* first, char* end) noexcept;

/// The positions up to which a text is read and written. Decoding works in place because `to` never passes `from`.
struct UnescapeCursor {
    const char* from;
    char* to;
};

namespace Plain {

/// Decodes what begins before `stop`. Two more bytes must be readable behind it.
template <bool HighBytesOnly>
UnescapeCursor UnescapeUntil(UnescapeCursor cursor, const char* stop) noexcept {
    auto [from, to] = cursor;
    while (from < stop) {
        if (*from != '%') {
            *to++ = *from++;
            continue;
        }
        const int high = HexValue(from[1]);
        const int low = HexValue(from[2]);
        if (!HighBytesOnly && (high | low) >= 0) {
            *to++ = static_cast<char>(high * 16 + low);
            from += 3;
            continue;
        }
        const HexEscape escape = ReadEscape({'%', from[1], from[2]});
        if (HighBytesOnly && static_cast<signed char>(escape.byte) >= 0) {
            to = std::copy_n(from, escape.length, to);
        } else {
            *to++ = escape.byte;
        }
        from += escape.length;
    }
    return {from, to};
}

/// Decodes the rest of the text, and returns the end of what was written.
template <bool HighBytesOnly>
char* UnescapeRest(UnescapeCursor cursor, const char* end) noexcept {
    // An escape needs three bytes, so that none begins in the last two.
    if (end - cursor.from > 2) {
        cursor = UnescapeUntil<HighBytesOnly>(cursor, end - 2);
    }
    auto [from, to] = cursor;
    if (from != end) {
        *to++ = *from++;
    }
    if (from != end) {
        *to++ = *from;
    }
    return to;
}

template <bool HighBytesOnly>
char* Unescape(char* first, char* end) noexcept {
    constexpr std::ptrdiff_t step = 16;
    // Escapes come in clusters: after one, this many bytes are read singly before blocks are tried again.
    constexpr std::ptrdiff_t patience = 2 * step;
    UnescapeCursor cursor{first, first};
    while (end - cursor.from >= patience + 2) {
        cursor = UnescapeUntil<HighBytesOnly>(cursor, cursor.from + patience);
        for (; end - cursor.from >= step; cursor.from += step, cursor.to += step) {
            const Block16 block = Block16::Load(cursor.from);
            if (block.Equals('%') != 0) {
                break;
            }
            block.Store(cursor.to);
        }
    }
    return UnescapeRest<HighBytesOnly>(cursor, end);
}

}  // namespace Plain
}  // namespace Lum::Internal
