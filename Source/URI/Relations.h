// How two paths lie to each other, segment by segment.
#pragma once

#include <cstddef>
#include <string_view>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/URI/PathSegments.h"

namespace Lum {

inline bool AreEqual(std::string_view a, std::string_view b, bool caseSensitive) noexcept {
    return caseSensitive ? a == b : EqualIgnoringAsciiCase(a, b);
}

/// Moves both walks past the segments that they have in common, and returns how many there were.
inline std::size_t SkipCommonSegments(Segments& a, Segments& b, bool caseSensitive) noexcept {
    std::size_t count = 0;
    while (!a.AtEnd() && !b.AtEnd() && AreEqual(a.Current(), b.Current(), caseSensitive)) {
        a.Next();
        b.Next();
        ++count;
    }
    return count;
}

/// What `a` is to `b`, as URI::GetRelation tells for URIs of one authority.
inline RelationCode RelatePaths(std::string_view a, std::string_view b, bool caseSensitive) noexcept {
    if (AreEqual(a, b, caseSensitive) || (a == "/" && b.empty()) || (a.empty() && b == "/")) {
        return kRelationSame;
    }
    Segments aWalk(a);
    Segments bWalk(b);
    SkipCommonSegments(aWalk, bWalk, caseSensitive);
    if (aWalk.AtEnd() == bWalk.AtEnd()) {
        // Both at their ends: "/a" and "/a/" are unrelated. Deliberate, unlike "/" and "".
        return kRelationNone;
    }
    return bWalk.AtEnd() ? kRelationChild : kRelationParent;
}

}  // namespace Lum
