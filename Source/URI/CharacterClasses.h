// The character classes of RFC 2396, appendix A, as texts that list their members.
//
// A class is made at compile time from the texts of earlier classes. It has the name of the public string of
// Lum::URI that holds the same text. The sets that escaping uses, in Escaping.h, are made from these too.
//
// Compatibility: the delimiters hold ":", "?" and "@" beside those of the RFC, because stored URIs have them
// escaped. In a non-hierarchical part "@" stays as it is, so that mail addresses can be read. Square brackets are
// both reserved and unwise.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include <Lum/URI.h>

namespace Lum::Internal::Classes {

/// The concatenation of texts, at compile time.
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

inline constexpr std::string_view URIlowalpha = "abcdefghijklmnopqrstuvwxyz";
inline constexpr std::string_view URIupalpha = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
inline constexpr std::string_view URIalpha = Joined<URIlowalpha, URIupalpha>::text;
inline constexpr std::string_view URIdigit = "0123456789";
inline constexpr std::string_view URIalphanum = Joined<URIalpha, URIdigit>::text;
inline constexpr std::string_view URIreserved = ";/?:@&=+$,[]";
inline constexpr std::string_view URImark = "-_.!~*'()";
inline constexpr std::string_view URIunreserved = Joined<URIalphanum, URImark>::text;
inline constexpr std::string_view URIuric = Joined<URIreserved, URIunreserved>::text;
inline constexpr std::string_view hexLetters = "ABCDEFabcdef";
inline constexpr std::string_view URIhex = Joined<URIdigit, hexLetters>::text;
inline constexpr std::string_view URIescaped = "%xx";
inline constexpr std::string_view URIspace = " ";
inline constexpr std::string_view URIdelims_real = "<>#%\"";
inline constexpr std::string_view moreDelims = ":?@";
inline constexpr std::string_view moreNonhierDelims = ":?";
inline constexpr std::string_view URIdelims = Joined<URIdelims_real, moreDelims>::text;
inline constexpr std::string_view URInonhierdelims = Joined<URIdelims_real, moreNonhierDelims>::text;
inline constexpr std::string_view URIunwise = "{}|\\^[]`";
inline constexpr std::string_view URIcontrol{URI::controlchars};
inline constexpr std::string_view URIexcluded = Joined<URIcontrol, URIspace, URIdelims, URIunwise>::text;
inline constexpr std::string_view URIqueryreserved = "/?:@&=+$";
inline constexpr std::string_view URIqueryexcluded =
    Joined<URIcontrol, URIspace, URIdelims, URIunwise, URIqueryreserved>::text;
inline constexpr std::string_view URInonhierexcluded = Joined<URIcontrol, URIspace, URInonhierdelims, URIunwise>::text;

inline constexpr std::string_view moreModified = "/;";
inline constexpr std::string_view modifiedExcluded = Joined<URIexcluded, moreModified>::text;

static_assert(URIcontrol.size() == 32);
static_assert(URIexcluded.size() == 32 + 1 + 8 + 8);

/// The bytes 0x80 to 0xFF in ascending order.
inline constexpr std::array<char, 128> highBytes = [] {
    std::array<char, 128> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(0x80 + i));
    }
    return bytes;
}();

constexpr std::string_view HighBytesExcluded() noexcept { return {highBytes.data(), highBytes.size()}; }

}  // namespace Lum::Internal::Classes
