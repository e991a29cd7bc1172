// Applies references to URIs.
//
// After RFC 2396, not RFC 3986: a query-only reference replaces the last path segment, dot segments
// go only after the merge, and those of an absolute path stay. The arithmetic works on unescaped
// paths, so that "%2E%2E" counts as ".." and "%2F" divides segments; the setters escape again.
#include "Source/URI/Resolution.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/URI/CommonForm.h"
#include "Source/URI/Cutter.h"
#include "Source/URI/Escaping.h"
#include "Source/URI/PathSegments.h"
#include "Source/URI/UnescapedView.h"

namespace Lum {

std::string ResolvePath(std::string_view base, std::string_view reference, bool keepsLeadingDots) {
    PathBuilder path(HasLeadingSlash(base), std::uint64_t{base.size()} + reference.size() + 2);
    bool endsAsDirectory = false;
    const auto walk = [&](std::string_view part) {
        for (Segments segments(part); !segments.AtEnd(); segments.Next()) {
            const std::string_view segment = segments.Current();
            endsAsDirectory = segment == "." || segment == "..";
            if (segment == "..") {
                if (path.IsEmpty() ? keepsLeadingDots : path.Top() == "..") {
                    path.Push(segment);
                } else if (!path.IsEmpty()) {
                    path.Pop();
                }
            } else if (segment != ".") {
                path.Push(segment);
            }
        }
    };
    walk(HasTrailingSlash(base) ? base : base.substr(0, base.size() - LastSegment(base).size()));
    walk(reference);
    return std::move(path).Take(HasTrailingSlash(reference) || endsAsDirectory);
}

std::optional<PathEdit> FindPathEdit(std::string_view base, std::string_view reference) noexcept {
    if (reference.empty()) {
        return std::nullopt;
    }
    std::string_view directory = base.substr(0, base.size() - LastSegment(base).size());
    while (reference.starts_with('.')) {
        const std::size_t dots = reference.starts_with("..") ? 2 : 1;
        if (reference.size() > dots && reference[dots] != '/') {
            return std::nullopt;
        }
        if (dots == 2) {
            if (directory.size() < 2) {
                return std::nullopt;
            }
            directory.remove_suffix(1);
            directory = directory.substr(0, directory.size() - LastSegment(directory).size());
        }
        reference.remove_prefix(std::min(dots + 1, reference.size()));
    }
    if (reference.starts_with('/') || !HasPlainSegments(reference) || !HasPlainSegments(base)) {
        return std::nullopt;
    }
    return PathEdit{directory.size(), reference};
}

namespace {

/// Cuts a reference that is relative and valid; returns false for any other.
bool CutRelative(std::string_view text, PathAndTails& cuts) noexcept {
    if (CutPlainlyRelative(text, cuts)) {
        return !cuts.hasBackslash;
    }
    const Cuts all = Cut(text);
    cuts = all.rest;
    return !all.hasScheme && !cuts.hasBackslash;
}

/// Stores what escaping the unescaped text would give.
void StoreNormalised(std::string& component, std::string_view escaped) {
    if (escaped.empty()) {
        component.clear();
    } else if (HasMember(escaped, kExcluded)) {
        component = FastEscapeChars(UnescapeText(escaped), kExcluded);
    } else {
        component.assign(escaped.data(), escaped.size());
    }
}

}  // namespace

bool URI::ChDir(StringProxy reference, bool escape) {
    std::string text = escape ? FastEscapeChars(std::move(reference.m_Text), kExcluded) : std::move(reference.m_Text);
    if (text.empty()) {
        return true;
    }
    if (text.starts_with("//")) {
        ParseURI(GetScheme() + ':' + text);
        return true;
    }
    if (text.front() == '?') {
        // The empty path of such a reference stands for the directory, as RFC 2396 has it.
        text.insert(0, "./");
    }
    PathAndTails cuts;
    if (!CutRelative(text, cuts)) {
        // Replaces the whole URI; a reference that does not parse leaves it in the empty state.
        URI::operator=(URI(std::move(text)));
        return true;
    }
    const UnescapedView unescaped(cuts.path);
    const std::string_view path = unescaped.Get();
    if (HasLeadingSlash(path)) {
        SetPath(path);
    } else if (!Segments(path).AtEnd() || !cuts.query.empty()) {
        ChangePath(path);
    } else {
        StoreNormalised(m_Fragment, cuts.fragment);
        return true;
    }
    StoreNormalised(m_Query, cuts.query);
    StoreNormalised(m_Fragment, cuts.fragment);
    return true;
}

void URI::ChangePath(std::string_view reference) {
    // Where both paths are as SetPath would store them, most references come to a cut and an addition.
    if (!HasMember(reference, kExcluded) && !HasMember(m_Path, kExcluded)) {
        if (const auto edit = FindPathEdit(m_Path, reference)) {
            m_Path.replace(edit->kept, std::string::npos, edit->added);
            AcceptPath();
            return;
        }
    }
    const UnescapedView base(m_Path);
    // A relative target keeps what climbs above its start; an absolute one has nothing there.
    SetPath(ResolvePath(base.Get(), reference, IsRelative()));
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

}  // namespace Lum
