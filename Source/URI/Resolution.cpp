// Applies references to URIs.
//
// After RFC 2396, not RFC 3986: a query-only reference replaces the last path segment, dot segments
// go only after the merge, and those of an absolute path stay. The arithmetic works on unescaped
// paths, so that "%2E%2E" counts as ".." and "%2F" divides segments; the setters escape again.
#include "Source/URI/Resolution.h"

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
    PathBuilder path(HasLeadingSlash(base), base.size() + reference.size() + 2);
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

namespace {

/// Cuts a reference that is relative and valid; returns false for any other.
bool CutRelative(std::string_view text, PathAndTails& cuts) noexcept {
    if (IsPlainlyRelative(text)) {
        cuts = CutTails(text);
        return !cuts.hasBackslash;
    }
    const Cuts all = Cut(text);
    cuts = all.rest;
    return !all.hasScheme && !cuts.hasBackslash;
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
    const UnescapedView path(cuts.path);
    const UnescapedView query(cuts.query);
    const UnescapedView fragment(cuts.fragment);
    if (!HasLeadingSlash(path.Get())) {
        if (Segments(path.Get()).AtEnd() && cuts.query.empty()) {
            SetFragment(fragment.Get());
            return true;
        }
        const UnescapedView base(m_Path);
        // A relative target keeps what climbs above its start; an absolute one has nothing there.
        SetPath(ResolvePath(base.Get(), path.Get(), IsRelative()));
    } else {
        SetPath(path.Get());
    }
    SetQuery(query.Get(), true);
    SetFragment(fragment.Get());
    return true;
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
