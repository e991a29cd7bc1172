// The character classes of RFC 2396, appendix A, and the sets that escaping consults.
//
// Every class is a text made at compile time from the texts of earlier ones; the public strings of
// Lum::URI and the bitmaps are both made from these, so that a class has one definition. The
// deviations from the RFC are wanted: ":", "?" and "@" among the delimiters make everything that is
// escaped through the "excluded" class escape them too, and "@" stays literal in a non-hierarchical
// part so that a mail address reads as one. Square brackets are reserved and unwise at once.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include <Lum/URI.h>

#include "Source/Base/CharBitMap.h"

namespace Lum::Classes {

/// The concatenation of texts known at compile time, itself known at compile time.
template <const std::string_view&... Texts>
class Joined {
    static constexpr auto Bytes() noexcept {
        std::array<char, (Texts.size() + ...)> bytes{};
        std::size_t at = 0;
        const auto append = [&](std::string_view text) {
            for (const char c : text) {
                bytes[at++] = c;
            }
        };
        (append(Texts), ...);
        return bytes;
    }
    static constexpr auto s_Bytes = Bytes();

public:
    static constexpr std::string_view text{s_Bytes.data(), s_Bytes.size()};
};

inline constexpr std::string_view lowalpha = "abcdefghijklmnopqrstuvwxyz";
inline constexpr std::string_view upalpha = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
inline constexpr std::string_view alpha = Joined<lowalpha, upalpha>::text;
inline constexpr std::string_view digit = "0123456789";
inline constexpr std::string_view alphanum = Joined<alpha, digit>::text;
inline constexpr std::string_view reserved = ";/?:@&=+$,[]";
inline constexpr std::string_view mark = "-_.!~*'()";
inline constexpr std::string_view unreserved = Joined<alphanum, mark>::text;
inline constexpr std::string_view uric = Joined<reserved, unreserved>::text;
inline constexpr std::string_view hexLetters = "ABCDEFabcdef";
inline constexpr std::string_view hex = Joined<digit, hexLetters>::text;
inline constexpr std::string_view escaped = "%xx";
inline constexpr std::string_view space = " ";
inline constexpr std::string_view delimsReal = "<>#%\"";
inline constexpr std::string_view moreDelims = ":?@";
inline constexpr std::string_view moreNonhierDelims = ":?";
inline constexpr std::string_view delims = Joined<delimsReal, moreDelims>::text;
inline constexpr std::string_view nonhierdelims = Joined<delimsReal, moreNonhierDelims>::text;
inline constexpr std::string_view unwise = "{}|\\^[]`";
inline constexpr std::string_view control{URI::controlchars};
inline constexpr std::string_view excluded = Joined<control, space, delims, unwise>::text;
inline constexpr std::string_view queryreserved = "/?:@&=+$";
inline constexpr std::string_view queryexcluded = Joined<control, space, delims, unwise, queryreserved>::text;
inline constexpr std::string_view nonhierexcluded = Joined<control, space, nonhierdelims, unwise>::text;

inline constexpr std::string_view moreModified = "/;";
inline constexpr std::string_view modifiedExcluded = Joined<excluded, moreModified>::text;

static_assert(control.size() == 32);
static_assert(excluded.size() == 32 + 1 + 8 + 8);

/// The bytes 0x80 to 0xFF in ascending order.
inline constexpr std::array<char, 128> highBytes = [] {
    std::array<char, 128> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(0x80 + i));
    }
    return bytes;
}();

}  // namespace Lum::Classes

namespace Lum {

constexpr std::string_view HighBytesExcluded() noexcept {
    return {Classes::highBytes.data(), Classes::highBytes.size()};
}

inline constexpr CharBitMap URIexcludedBitMap{Classes::excluded};
inline constexpr CharBitMap ModifiedURIEXcludedBitMap{Classes::modifiedExcluded};
inline constexpr CharBitMap URIqueryexcludedBitMap{Classes::queryexcluded};
inline constexpr CharBitMap URInonhierexcludedBitMap{Classes::nonhierexcluded};
inline constexpr CharBitMap URIhighBytesExcludedBitMap{HighBytesExcluded()};

static_assert(!URIexcludedBitMap.Contains('\0') && URIexcludedBitMap.Contains('@'));
static_assert(!URInonhierexcludedBitMap.Contains('@') && ModifiedURIEXcludedBitMap.Contains('/'));
static_assert(!URIqueryexcludedBitMap.Contains(';') && URIhighBytesExcludedBitMap.Contains(0xFF));

}  // namespace Lum
