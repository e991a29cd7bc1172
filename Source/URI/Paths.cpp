// The relation of two paths, the path arithmetic of references, and paths as lists of segments.
#include "Source/URI/Paths.h"

#include <algorithm>
#include <vector>

#include <Lum/URI.h>

namespace Lum::Internal {

RelationCode RelatePaths(std::string_view a, std::string_view b, bool caseSensitive) noexcept {
    if (AreEqual(a, b, caseSensitive) || (a == "/" && b.empty()) || (a.empty() && b == "/")) {
        return kRelationSame;
    }
    Segments aWalk(a);
    Segments bWalk(b);
    SkipCommonSegments(aWalk, bWalk, caseSensitive);
    if (aWalk.AtEnd() == bWalk.AtEnd()) {
        // Compatibility: "/a" and "/a/" are unrelated, unlike "/" and "". To callers a file and a directory of the
        // same name are different places.
        return kRelationNone;
    }
    return bWalk.AtEnd() ? kRelationChild : kRelationParent;
}

std::string ResolvePath(std::string_view base, std::string_view reference, bool keepsLeadingDots) {
    PathBuilder path(HasLeadingSlash(base), std::uint64_t{base.size()} + reference.size() + 2);
    bool endsAsDirectory = false;
    const auto append = [&](std::string_view part) {
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
    append(HasTrailingSlash(base) ? base : base.substr(0, base.size() - LastSegment(base).size()));
    append(reference);
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

std::string RelativePath(std::string_view target, std::string_view baseDirectory, bool caseSensitive) {
    Segments targetWalk(target);
    Segments baseWalk(baseDirectory);
    SkipCommonSegments(targetWalk, baseWalk, caseSensitive);
    std::size_t climbs = 0;
    for (Segments rest = baseWalk; !rest.AtEnd(); rest.Next()) {
        ++climbs;
    }
    PathBuilder path(false, 3 * std::uint64_t{climbs} + targetWalk.Rest().size() + 2);
    for (; climbs > 0; --climbs) {
        path.Push("..");
    }
    for (; !targetWalk.AtEnd(); targetWalk.Next()) {
        path.Push(targetWalk.Current());
    }
    return path.IsEmpty() ? "./" : std::move(path).Take(HasTrailingSlash(target));
}

std::optional<RelativeEdit> FindRelativeEdit(std::string_view target, std::string_view base) noexcept {
    const std::string_view directory = base.substr(0, base.size() - LastSegment(base).size());
    if (!HasLeadingSlash(target) || !HasLeadingSlash(base) || !HasPlainSegments(target) ||
        !HasPlainSegments(directory)) {
        return std::nullopt;
    }
    const auto difference = std::mismatch(target.begin(), target.end(), directory.begin(), directory.end());
    const auto shared = static_cast<std::size_t>(difference.first - target.begin());
    // If the whole target names a directory above the base, it is shared up to its end and not only to its last slash.
    const bool isAbove = shared == target.size() && directory.substr(shared).starts_with('/');
    const std::size_t dropped = isAbove ? shared : FindLast(target.substr(0, shared), '/') + 1;
    const std::string_view below = directory.substr(dropped + (isAbove ? 1 : 0));
    return RelativeEdit{dropped, static_cast<std::size_t>(std::count(below.begin(), below.end(), '/'))};
}

void MakeEdit(std::string& target, RelativeEdit edit) {
    constexpr std::string_view climb = "../";
    const std::uint64_t climbing = climb.size() * std::uint64_t{edit.climbs};
    const bool endsWithClimb = edit.dropped == target.size() && !HasTrailingSlash(target);
    ReserveFor(target, target.size() - edit.dropped + climbing);
    target.replace(0, edit.dropped, static_cast<std::size_t>(climbing), '.');
    for (std::size_t i = climb.size() - 1; i < climbing; i += climb.size()) {
        target[i] = '/';
    }
    if (target.empty()) {
        target = "./";
    } else if (endsWithClimb) {
        target.pop_back();
    }
}

}  // namespace Lum::Internal

namespace Lum {

using namespace Internal;

void URI::SplitPath(const std::string& path, std::vector<std::string>& segments, bool& leadingSlash,
                    bool& trailingSlash) {
    // The path may be one of the segments, which move when the list grows.
    const std::string copy = path;  // NOLINT(performance-unnecessary-copy-initialization)
    leadingSlash = HasLeadingSlash(copy);
    trailingSlash = HasTrailingSlash(copy);
    for (Segments walk(copy); !walk.AtEnd(); walk.Next()) {
        segments.emplace_back(walk.Current());
    }
}

void URI::SplitPath(const std::string& path, std::vector<std::string>& segments) {
    bool ignored = false;
    SplitPath(path, segments, ignored, ignored);
}

std::string URI::JoinPath(const std::vector<std::string>& segments, bool leadingSlash, bool trailingSlash) {
    std::uint64_t size = 2;
    for (const std::string& segment : segments) {
        size += segment.size() + 1;
    }
    PathBuilder path(leadingSlash, size);
    for (const std::string& segment : segments) {
        path.Push(segment);
    }
    return std::move(path).Take(trailingSlash);
}

}  // namespace Lum
