// Letters and case as ASCII has them, whatever the locale; bytes from 0x80 are no letters.
#pragma once

#include <cstddef>
#include <string_view>

namespace Lum {

constexpr bool IsAsciiUpper(char c) noexcept { return c >= 'A' && c <= 'Z'; }

constexpr char ToAsciiLower(char c) noexcept { return IsAsciiUpper(c) ? static_cast<char>(c | 0x20) : c; }

constexpr bool IsAsciiLetter(char c) noexcept {
    const char folded = static_cast<char>(c | 0x20);
    return folded >= 'a' && folded <= 'z';
}

constexpr bool IsAsciiLetters(std::string_view text) noexcept {
    for (const char c : text) {
        if (!IsAsciiLetter(c)) {
            return false;
        }
    }
    return true;
}

/// Less than, equal to or greater than 0, by unsigned bytes, then by length; case ignored.
constexpr int CompareIgnoringAsciiCase(std::string_view a, std::string_view b) noexcept {
    const std::size_t shared = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < shared; ++i) {
        const auto x = static_cast<unsigned char>(ToAsciiLower(a[i]));
        const auto y = static_cast<unsigned char>(ToAsciiLower(b[i]));
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

constexpr bool EqualIgnoringAsciiCase(std::string_view a, std::string_view b) noexcept {
    return a.size() == b.size() && CompareIgnoringAsciiCase(a, b) == 0;
}

}  // namespace Lum
