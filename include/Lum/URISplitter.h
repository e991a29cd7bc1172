// Internal: how the text of a reference is split into scheme, authority, path, query and fragment.
//
// ExplainURI of <Lum/URIProblem.h> and the parser share this definition, which is why it is installed; programs
// use Lum::URI. It decides only where the pieces are. It refuses nothing, changes nothing and allocates nothing.
//
// Compatibility: RFC 2396, appendix B, starts the fragment and the query at the first "#" and "?", and limits the
// characters of a scheme. Applications have stored texts that need the rules below: the last "#" and "?" count,
// everything before the ":" is the scheme, and four or more slashes behind it count as two.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Lum::Internal {

/// A character that divides a text, and which of its occurrences does.
struct Delimiter {
    char mark;
    bool isLast;
};

// The grammar: the delimiters in the order in which they divide a text.
inline constexpr Delimiter kFragmentStart{'#', true};
inline constexpr Delimiter kQueryStart{'?', true};
inline constexpr Delimiter kSchemeEnd{':', false};  // Counts only if it comes before any "/".
inline constexpr Delimiter kPathStart{'/', false};  // Behind the "//" of the authority.
inline constexpr Delimiter kUserInfoEnd{'@', true};
inline constexpr Delimiter kPasswordStart{':', false};
inline constexpr Delimiter kPortStart{':', false};  // An IPv6 literal has rules of its own, see Authority.h.

inline constexpr std::string_view kAuthorityStart = "//";

/// The pieces of a text. They are views of it.
struct URIPieces {
    std::string_view scheme;
    std::string_view authority;
    std::string_view path;  ///< The non-hierarchical part where the text has one.
    std::string_view query;
    std::string_view fragment;
    bool hasScheme = false;
    bool isHierarchical = true;

    friend constexpr bool operator==(const URIPieces&, const URIPieces&) = default;
};

/// Searches that work at compile time. The parser puts faster ones in their place.
struct PlainSearch {
    static constexpr std::size_t First(std::string_view text, char wanted) noexcept { return text.find(wanted); }
    static constexpr std::size_t Last(std::string_view text, char wanted) noexcept { return text.rfind(wanted); }
};

/// The position of the delimiter, or npos.
template <class Search>
constexpr std::size_t Find(std::string_view text, Delimiter delimiter) noexcept {
    return delimiter.isLast ? Search::Last(text, delimiter.mark) : Search::First(text, delimiter.mark);
}

/// Removes the delimiter and all that follows it from `text`, and returns what followed.
template <class Search>
constexpr std::string_view SplitTail(std::string_view& text, Delimiter delimiter) noexcept {
    const std::size_t at = Find<Search>(text, delimiter);
    if (at == std::string_view::npos) {
        return {};
    }
    const std::string_view tail = text.substr(at + 1);
    text = text.substr(0, at);
    return tail;
}

/// Splits the part of a text that follows scheme and authority.
template <class Search>
constexpr void SplitRest(std::string_view text, URIPieces& pieces) noexcept {
    pieces.fragment = SplitTail<Search>(text, kFragmentStart);
    pieces.query = SplitTail<Search>(text, kQueryStart);
    pieces.path = text;
}

/// Splits any text. This is the definition; the fast splitter must give the same.
template <class Search = PlainSearch>
constexpr URIPieces SplitURI(std::string_view text) noexcept {
    URIPieces pieces;
    SplitRest<Search>(text, pieces);
    std::string_view& path = pieces.path;
    const std::size_t colon = Find<Search>(path, kSchemeEnd);
    if (colon == std::string_view::npos || Find<Search>(path.substr(0, colon), kPathStart) != std::string_view::npos) {
        return pieces;
    }
    pieces.hasScheme = true;
    pieces.scheme = path.substr(0, colon);
    path.remove_prefix(colon + 1);
    pieces.isHierarchical = path.starts_with(kAuthorityStart);
    if (pieces.isHierarchical) {
        path.remove_prefix(kAuthorityStart.size());
        if (path.starts_with(kAuthorityStart)) {
            path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
        }
        const std::size_t slash = std::min(Find<Search>(path, kPathStart), path.size());
        pieces.authority = path.substr(0, slash);
        path.remove_prefix(slash);
    }
    return pieces;
}

}  // namespace Lum::Internal
