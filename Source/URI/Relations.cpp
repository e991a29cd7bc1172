// Questions about two URIs: whether one is the same as, above or below the other, and their common parent.
//
// Both URIs pass through the resolver first. Without a resolver nothing is copied.
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/URI/Escaping.h"
#include "Source/URI/Paths.h"
#include "Source/URI/Record.h"
#include "Source/URI/Scheme.h"
#include "Source/URI/UnescapingPlain.h"

namespace Lum {

using namespace Internal;

namespace {

std::string_view WithDefault(std::string_view port, std::string_view scheme) noexcept {
    return port.empty() ? DefaultPortOf(scheme) : port;
}

/// Whether a path that SetPath stored is read as a different path. SetPath keeps the first three bytes of a "file"
/// path with a drive unescaped, and "%4|" is an escape when it is read. The byte that it stands for begins no other
/// escape. Therefore the path one step up is always read as it was set.
bool ChangesWhenStoredAgain(std::string_view path) noexcept {
    return path.size() > 2 && path[2] == '|' && ReadEscape({path[0], path[1], path[2]}).length == 3;
}

}  // namespace

bool URI::Access::HasSchemeOf(const URI& a, const URI& b) {
    return IsPlainURI(a) ? EqualIgnoringAsciiCase(a.m_Scheme, UnescapedView(b.m_Scheme).Get())
                         : a.IsOfType(b.GetScheme());
}

bool URI::Access::HaveSameAuthority(const URI& a, const URI& b) {
    // Hosts that differ as they are stored may still be read as the same.
    return a.m_ServerPort == b.m_ServerPort && (a.m_Authority == b.m_Authority || a.GetAuthority() == b.GetAuthority());
}

bool URI::Access::AreComparable(const URI& a, const URI& b) noexcept {
    // Hosts differ most often, and most often in length.
    return a.m_Authority == b.m_Authority && a.m_Scheme == b.m_Scheme && !a.m_IsRelative && !b.m_IsRelative &&
           a.m_IsHierarchical == b.m_IsHierarchical &&
           WithDefault(a.m_ServerPort, a.m_Scheme) == WithDefault(b.m_ServerPort, b.m_Scheme);
}

RelationCode URI::Access::Relate(const URI& a, const URI& b, bool caseSensitive) {
    if (!AreComparable(a, b)) {
        return kRelationNone;
    }
    if (!a.m_IsHierarchical) {
        return a.m_NonHierarchical == b.m_NonHierarchical ? kRelationSame : kRelationNone;
    }
    return RelatePaths(UnescapedView(a.m_Path).Get(), UnescapedView(b.m_Path).Get(), caseSensitive);
}

int URI::GetRelation(const URI& other, bool caseSensitive) const {
    if (m_Resolver == nullptr) {
        return Access::Relate(*this, other, caseSensitive);
    }
    const URI a = Resolve(*this);
    const URI b = Resolve(other);
    return Access::Relate(a, b, caseSensitive);
}

int URI::GetRelationByString(StringProxy a, StringProxy b) {
    const URI first = Resolve(URI(std::move(a)));
    const URI second = Resolve(URI(std::move(b)));
    return first.GetRelation(second, true);
}

URI URI::GetCommonParent(const URI& other, bool caseSensitive) const {
    URI parent = Resolve(*this);
    URI below = Resolve(other);
    if (parent.m_IsRelative || below.m_IsRelative) {
        return {};
    }
    parent.ChDir(".", false);
    below.ChDir(".", false);
    if (parent.m_IsRelative) {
        // The scheme was "unknown". Going up from a relative path would never end.
        return {};
    }
    for (;;) {
        // A resolver must be asked at every level. Without one, the levels between can be skipped.
        if (m_Resolver == nullptr && !ChangesWhenStoredAgain(parent.m_Path)) {
            Access::ReduceToCommonParent(parent, below, caseSensitive);
            return parent;
        }
        const int relation = parent.GetRelation(below, caseSensitive);
        if (relation == kRelationSame || relation == kRelationParent) {
            return parent;
        }
        const std::string before = parent.ToString(false);
        parent.ChDir("..", false);
        if (parent.ToString(false) == before) {
            return parent;
        }
    }
}

void URI::Access::ReduceToCommonParent(URI& uri, const URI& other, bool caseSensitive) {
    const std::string path = uri.GetPath();
    std::size_t kept = 0;
    if (AreComparable(uri, other)) {
        const UnescapedView otherPath(other.m_Path);
        Segments walk(path);
        Segments otherWalk(otherPath.Get());
        kept = SkipCommonSegments(walk, otherWalk, caseSensitive);
        const bool reachesOther = kept > 0 && otherWalk.AtEnd();
        if (reachesOther && HasLeadingSlash(path) != HasLeadingSlash(otherPath.Get())) {
            // Only one of the paths starts at the root, so that equal segments name different directories. The one
            // above is common.
            --kept;
        } else if (walk.AtEnd()) {
            return;
        }
    }
    PathBuilder parent(HasLeadingSlash(path), path.size());
    for (Segments walk(path); kept > 0; --kept, walk.Next()) {
        parent.Push(walk.Current());
    }
    uri.SetPath(std::move(parent).Take(true));
}

URI URI::GetCommonParentByString(StringProxy a, StringProxy b, bool caseSensitive) {
    const URI first = Resolve(URI(std::move(a)));
    const URI second = Resolve(URI(std::move(b)));
    return first.GetCommonParent(second, caseSensitive);
}

bool URI::CompareAuthority(StringProxy a, StringProxy b) {
    const URI first = Resolve(URI(std::move(a)));
    const URI second = Resolve(URI(std::move(b)));
    return Access::HaveSameAuthority(first, second);
}

bool URI::IsUnderDirectory(StringProxy name) const {
    const UnescapedView path(m_Path);
    for (Segments segments(path.Get()); !segments.AtEnd(); segments.Next()) {
        if (segments.Current() == name.m_Text) {
            return true;
        }
    }
    return false;
}

}  // namespace Lum
