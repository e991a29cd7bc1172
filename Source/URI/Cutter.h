// Cuts the text of a reference into its components at fixed delimiters.
//
// Decides only where the pieces lie: it refuses nothing, changes nothing and allocates nothing. What
// remains to be done to a piece before it is stored (lower-casing, brackets) is
// told beside it. The order of the searches is RFC 2396's (appendix B) but for two things: fragment
// and query start at the last "#" and "?", not the first, and what stands before a ":" is a scheme
// whatever its characters. Both are wanted.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "Source/Base/Ascii.h"
#include "Source/Base/ByteSearch.h"
#include "Source/URI/HostText.h"

namespace Lum {

inline constexpr std::size_t kNotFound = std::string_view::npos;

/// The pieces of an authority.
struct Authority {
    std::string_view username;
    std::string_view password;
    std::string_view host;
    std::string_view port;
    bool hostHasUpper = false;
    bool hostNeedsBrackets = false;

    friend bool operator==(const Authority&, const Authority&) = default;
};

/// The pieces from the path on.
struct PathAndTails {
    std::string_view path;  ///< Or the non-hierarchical part.
    std::string_view query;
    std::string_view fragment;
    bool hasBackslash = false;  ///< In the path; what is cut off may have them.

    friend bool operator==(const PathAndTails&, const PathAndTails&) = default;
};

/// The pieces of one text. Those of a form that is not the text's stay empty.
struct Cuts {
    std::string_view scheme;
    Authority authority;
    PathAndTails rest;
    bool hasScheme = false;
    bool isHierarchical = true;
    bool schemeIsLetters = true;
    bool schemeHasUpper = false;

    friend bool operator==(const Cuts&, const Cuts&) = default;
};

inline bool HasUpper(std::string_view text) noexcept { return std::any_of(text.begin(), text.end(), IsAsciiUpper); }

/// Divides a host text without user information into host and port.
inline void CutHost(std::string_view text, Authority& cuts) noexcept {
    cuts.host = text;
    if (!IsIPv6Literal(text)) {
        if (const std::size_t colon = FindFirst(text, ':'); colon != kNotFound) {
            cuts.host = text.substr(0, colon);
            cuts.port = text.substr(colon + 1);
        }
        return;
    }
    if (text.front() == '[') {
        if (const std::size_t end = text.find("]:"); end != kNotFound) {
            cuts.host = text.substr(0, end + 1);
            cuts.port = text.substr(end + 2);
        }
        return;
    }
    cuts.hostNeedsBrackets = true;
    // Eight colons are one more than an address has: the last group is the port, if it is a number.
    const std::size_t last = FindLast(text, ':');
    if (std::count(text.begin(), text.end(), ':') == 8 && IsDecimalToTheEnd(text.substr(last + 1))) {
        cuts.host = text.substr(0, last);
        cuts.port = text.substr(last + 1);
    }
}

/// Divides an authority into user information, host and port.
inline Authority CutAuthority(std::string_view text) noexcept {
    Authority cuts;
    if (const std::size_t at = FindLast(text, '@'); at != kNotFound) {
        const std::string_view user = text.substr(0, at);
        const std::size_t divider = FindFirst(user, ':');
        cuts.username = user.substr(0, divider);
        cuts.password = divider == kNotFound ? std::string_view{} : user.substr(divider + 1);
        text.remove_prefix(at + 1);
    }
    CutHost(text, cuts);
    cuts.hostHasUpper = HasUpper(cuts.host);
    return cuts;
}

/// Splits `text` at its last `delimiter`, which goes with neither part; returns what follows it.
inline std::string_view CutTail(std::string_view& text, char delimiter) noexcept {
    const std::size_t at = FindLast(text, delimiter);
    if (at == kNotFound) {
        return {};
    }
    const std::string_view tail = text.substr(at + 1);
    text = text.substr(0, at);
    return tail;
}

/// Cuts fragment and query off the end of `text`.
inline PathAndTails CutTails(std::string_view text) noexcept {
    PathAndTails cuts;
    cuts.fragment = CutTail(text, '#');
    cuts.query = CutTail(text, '?');
    cuts.path = text;
    cuts.hasBackslash = FindFirst(text, '\\') != kNotFound;
    return cuts;
}

/// Cuts any text. This is the definition of how a text is cut.
inline Cuts Cut(std::string_view text) noexcept {
    Cuts cuts;
    cuts.rest = CutTails(text);
    std::string_view& path = cuts.rest.path;
    const std::size_t colon = FindFirst(path, ':');
    if (colon == kNotFound || FindFirst(path.substr(0, colon), '/') != kNotFound) {
        return cuts;
    }
    cuts.hasScheme = true;
    cuts.scheme = path.substr(0, colon);
    cuts.schemeIsLetters = IsAsciiLetters(cuts.scheme);
    cuts.schemeHasUpper = HasUpper(cuts.scheme);
    path.remove_prefix(colon + 1);
    cuts.isHierarchical = path.starts_with("//");
    if (cuts.isHierarchical) {
        path.remove_prefix(2);
        if (path.starts_with("//")) {
            path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
        }
        const std::size_t slash = std::min(FindFirst(path, '/'), path.size());
        cuts.authority = CutAuthority(path.substr(0, slash));
        path.remove_prefix(slash);
    }
    cuts.rest.hasBackslash = FindFirst(path, '\\') != kNotFound;
    return cuts;
}

}  // namespace Lum
