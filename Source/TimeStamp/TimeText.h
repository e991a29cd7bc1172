// Writes the fields of a time as text, "%d-%02d-%02dT%02d:%02d:%02dZ" in printf's words, without printf,
// whose call costs several times as much as the digits.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>

namespace Lum::Internal {

/// Enough for any six fields.
inline constexpr std::size_t kTimeTextSize = 6 * 11 + 6;

/// "00" to "99", one after the other.
inline constexpr auto kDigitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

inline char* WritePair(char* to, unsigned int value) noexcept {
    std::memcpy(to, &kDigitPairs[std::size_t{2} * value], 2);
    return to + 2;
}

/// As "%d"; at most eleven characters.
inline char* WriteNumber(char* to, int value) noexcept { return std::to_chars(to, to + 11, value).ptr; }

/// As "%02d". A value that is not two digits, negative ones included, has two characters at least.
inline char* WriteField(char* to, int value) noexcept {
    const auto digits = static_cast<unsigned int>(value);
    return digits < 100 ? WritePair(to, digits) : WriteNumber(to, value);
}

/// As "%d", with a fast path for four digits.
inline char* WriteYear(char* to, int value) noexcept {
    const auto digits = static_cast<unsigned int>(value);
    return digits - 1000 < 9000 ? WritePair(WritePair(to, digits / 100), digits % 100) : WriteNumber(to, value);
}

/// Returns the end of the text.
inline char* WriteTime(char* to, int year, int month, int day, int hour, int minute, int second) noexcept {
    to = WriteYear(to, year);
    *to++ = '-';
    to = WriteField(to, month);
    *to++ = '-';
    to = WriteField(to, day);
    *to++ = 'T';
    to = WriteField(to, hour);
    *to++ = ':';
    to = WriteField(to, minute);
    *to++ = ':';
    to = WriteField(to, second);
    *to++ = 'Z';
    return to;
}

}  // namespace Lum::Internal
