// Letters and case as ASCII has them, whatever the locale; values from 0x80 are no letters.
#pragma once

#include <cstddef>
#include <string_view>

namespace Lum::Internal {

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

/// Changes each of the 26 letters from `first` on among the `size` units at `units` to its other case. Free of
/// branches, so that the compiler makes vector code of it.
inline void SwapAsciiCase(unsigned short* units, std::size_t size, unsigned short first) noexcept {
    for (std::size_t i = 0; i < size; ++i) {
        const bool isLetter = units[i] >= first && units[i] < first + 26;
        units[i] = static_cast<unsigned short>(units[i] ^ (isLetter ? 0x20U : 0U));
    }
}

inline void ToAsciiUpper(unsigned short* units, std::size_t size) noexcept { SwapAsciiCase(units, size, 'a'); }
inline void ToAsciiLower(unsigned short* units, std::size_t size) noexcept { SwapAsciiCase(units, size, 'A'); }

}  // namespace Lum::Internal
