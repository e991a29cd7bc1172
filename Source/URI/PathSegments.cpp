// Paths as lists of segments, for callers who want them as such.
#include "Source/URI/PathSegments.h"

#include <vector>

#include <Lum/URI.h>

namespace Lum {

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
