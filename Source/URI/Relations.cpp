// Questions about two URIs: the same, above, below, and where they meet.
//
// Both sides pass through the resolver first. Without one the URIs are looked at where they are.
#include "Source/URI/Relations.h"

#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/URI/Scheme.h"
#include "Source/URI/UnescapedView.h"

namespace Lum {
namespace {

std::string_view WithDefault(std::string_view port, std::string_view scheme) noexcept {
    return port.empty() ? DefaultPortOf(scheme) : port;
}

}  // namespace

bool URI::HasSameAuthority(const URI& other) const {
    return GetAuthority() == other.GetAuthority() && m_ServerPort == other.m_ServerPort;
}

bool URI::IsComparable(const URI& other) const noexcept {
    // Hosts differ most often, and most often in length.
    return m_Authority == other.m_Authority && m_Scheme == other.m_Scheme && !m_IsRelative && !other.m_IsRelative &&
           m_IsHierarchical == other.m_IsHierarchical &&
           WithDefault(m_ServerPort, m_Scheme) == WithDefault(other.m_ServerPort, other.m_Scheme);
}

RelationCode URI::Relate(const URI& other, bool caseSensitive) const {
    if (!IsComparable(other)) {
        return kRelationNone;
    }
    if (!m_IsHierarchical) {
        return m_NonHierarchical == other.m_NonHierarchical ? kRelationSame : kRelationNone;
    }
    return RelatePaths(UnescapedView(m_Path).Get(), UnescapedView(other.m_Path).Get(), caseSensitive);
}

int URI::GetRelation(const URI& other, bool caseSensitive) const {
    if (m_Resolver == nullptr) {
        return Relate(other, caseSensitive);
    }
    const URI a = Resolve(*this);
    const URI b = Resolve(other);
    return a.Relate(b, caseSensitive);
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
        // The scheme was "unknown"; climbing from a relative path would go on for ever.
        return {};
    }
    // A resolver is asked anew at each level, so the climb can be cut short only without one. Nor can
    // it where "%4|" at the head of a "file" path is kept as it is, and so reads as something else.
    const bool readsAnew = parent.m_Path.size() > 2 && parent.m_Path[0] == '%' && parent.m_Path[2] == '|';
    if (m_Resolver == nullptr && !readsAnew) {
        parent.ClimbAtOnce(below, caseSensitive);
        return parent;
    }
    for (;;) {
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

void URI::ClimbAtOnce(const URI& below, bool caseSensitive) {
    const std::string path = GetPath();
    std::size_t kept = 0;
    if (IsComparable(below)) {
        const UnescapedView other(below.m_Path);
        Segments walk(path);
        Segments otherWalk(other.Get());
        kept = SkipCommonSegments(walk, otherWalk, caseSensitive);
        const bool reachesOther = kept > 0 && otherWalk.AtEnd();
        if (reachesOther && HasLeadingSlash(path) != HasLeadingSlash(other.Get())) {
            // The same segments from another start are not the same place; one level up is above it.
            --kept;
        } else if (walk.AtEnd()) {
            return;
        }
    }
    PathBuilder parent(HasLeadingSlash(path), path.size());
    for (Segments walk(path); kept > 0; --kept, walk.Next()) {
        parent.Push(walk.Current());
    }
    SetPath(std::move(parent).Take(true));
}

URI URI::GetCommonParentByString(StringProxy a, StringProxy b, bool caseSensitive) {
    const URI first = Resolve(URI(std::move(a)));
    const URI second = Resolve(URI(std::move(b)));
    return first.GetCommonParent(second, caseSensitive);
}

bool URI::CompareAuthority(StringProxy a, StringProxy b) {
    const URI first = Resolve(URI(std::move(a)));
    const URI second = Resolve(URI(std::move(b)));
    return first.HasSameAuthority(second);
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
