// Applies references to URIs, and makes the shortest reference that leads from one URI to another.
//
// After RFC 2396, not RFC 3986: a query-only reference replaces the last path segment, dot segments are removed
// only after the merge, and those of an absolute path stay. The arithmetic works on unescaped paths, so that
// "%2E%2E" counts as ".." and "%2F" divides segments. The setters escape again.
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/URI/Escaping.h"
#include "Source/URI/FastSplitter.h"
#include "Source/URI/Paths.h"
#include "Source/URI/Record.h"

namespace Lum {

using namespace Internal;

namespace {

/// Splits a reference that is relative and valid; returns false for any other.
bool SplitRelative(std::string_view text, URIPieces& pieces) noexcept {
    if (!SplitPlainRelative(text, pieces)) {
        pieces = SplitURI<BlockSearch>(text);
    }
    return !pieces.hasScheme && FindFirst(pieces.path, '\\') == std::string_view::npos;
}

/// Stores what escaping the unescaped text would give.
void StoreNormalised(std::string& component, std::string_view escaped) {
    if (escaped.empty()) {
        component.clear();
    } else if (IsEscapedBy(escaped, URIexcludedBitMap)) {
        component.assign(escaped.data(), escaped.size());
    } else {
        component = FastEscapeChars(UnescapeText(escaped), URIexcludedBitMap);
    }
}

}  // namespace

bool URI::ChDir(StringProxy reference, bool escape) {
    std::string text =
        escape ? FastEscapeChars(std::move(reference.m_Text), URIexcludedBitMap) : std::move(reference.m_Text);
    if (text.empty()) {
        return true;
    }
    if (text.starts_with(kAuthorityStart)) {
        ParseURI(GetScheme() + ':' + text);
        return true;
    }
    if (text.front() == kQueryStart.mark) {
        // The empty path of such a reference stands for the directory, as RFC 2396 has it.
        text.insert(0, "./");
    }
    URIPieces pieces;
    if (!SplitRelative(text, pieces)) {
        // Replaces the whole URI; a reference that does not parse leaves it in the empty state.
        URI::operator=(URI(std::move(text)));
        return true;
    }
    const UnescapedView unescaped(pieces.path);
    const std::string_view path = unescaped.Get();
    if (HasLeadingSlash(path)) {
        SetPath(path);
    } else if (!path.empty() || !pieces.query.empty()) {
        Access::ApplyRelativePath(*this, path);
    } else {
        StoreNormalised(m_Fragment, pieces.fragment);
        return true;
    }
    StoreNormalised(m_Query, pieces.query);
    StoreNormalised(m_Fragment, pieces.fragment);
    return true;
}

void URI::Access::ApplyRelativePath(URI& uri, std::string_view reference) {
    // If SetPath would store both paths as they are, an edit is enough for most references.
    if (!HasMember(reference, URIexcludedBitMap) && !HasMember(uri.m_Path, URIexcludedBitMap)) {
        if (const auto edit = FindPathEdit(uri.m_Path, reference)) {
            uri.m_Path.replace(edit->kept, std::string::npos, edit->added);
            PathChanged(uri);
            return;
        }
    }
    const UnescapedView base(uri.m_Path);
    // A relative URI keeps the ".." that lead above its start. Nothing is above the root of an absolute one.
    uri.SetPath(ResolvePath(base.Get(), reference, uri.IsRelative()));
}

bool URI::MakeAbsoluteURI(const URI& base) {
    if (IsAbsolute() || base.IsRelative()) {
        return false;
    }
    URI absolute = base;
    absolute.ChDir(ToString(false), false);
    URI::operator=(std::move(absolute));
    return true;
}

bool URI::MakeRelativeURI(const URI& base, bool caseSensitive) {
    if (IsRelative()) {
        return true;
    }
    if (base.IsRelative() || !Access::HasSchemeOf(*this, base) || !Access::HaveSameAuthority(*this, base)) {
        return false;
    }
    // Compatibility: the answer is not used, but derived classes rely on being asked.
    static_cast<void>(IsDirectory());
    const auto isPlain = [](const std::string& path) { return !HasMember(path, URIexcludedBitMap); };
    const auto isNormal = [](const std::string& component) { return IsEscapedBy(component, URIexcludedBitMap); };
    if (caseSensitive && isPlain(m_Path) && isPlain(base.m_Path) && isNormal(m_Query) && isNormal(m_Fragment)) {
        // What SetParts below would store is what is stored already, but for the path.
        if (const auto edit = FindRelativeEdit(m_Path, base.m_Path)) {
            MakeEdit(m_Path, *edit);
            m_Scheme.clear();
            m_Authority.clear();
            m_ServerPort.clear();
            Access::PathChanged(*this);
            return true;
        }
    }
    // ChDir stores the path as it does for any directory, which can change how an odd path reads.
    URI directory = base;
    directory.ChDir(".", false);
    const UnescapedView target(m_Path);
    const UnescapedView from(directory.m_Path);
    std::string path = RelativePath(target.Get(), from.Get(), caseSensitive);
    SetParts("", "", "", std::move(path), GetQuery(true), GetFragment());
    return true;
}

}  // namespace Lum
