// Paths as texts: their segments, how two of them are related, and the path arithmetic of references.
//
// Nothing is unescaped here. Empty segments do not count ("a//b" reads like "a/b"). Whether a slash begins or
// ends the path is asked separately.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/Base/Block16.h"
#include "Source/Base/ByteSearch.h"
#include "Source/Base/Lengths.h"

namespace Lum::Internal {

/// Walks over a path's segments as views, first to last. "." and ".." are segments like any other.
class Segments {
public:
    explicit Segments(std::string_view path) noexcept : m_Rest(path) { SkipSlashes(); }

    [[nodiscard]] bool AtEnd() const noexcept { return m_Rest.empty(); }
    /// The current segment; not at the end.
    [[nodiscard]] std::string_view Current() const noexcept { return m_Rest.substr(0, m_Size); }
    void Next() noexcept {
        m_Rest.remove_prefix(m_Size);
        SkipSlashes();
    }
    /// All that is left of the path, from the current segment on.
    [[nodiscard]] std::string_view Rest() const noexcept { return m_Rest; }

private:
    void SkipSlashes() noexcept {
        while (!m_Rest.empty() && m_Rest.front() == '/') {
            m_Rest.remove_prefix(1);
        }
        const std::size_t slash = FindFirst(m_Rest, '/');
        m_Size = slash == std::string_view::npos ? m_Rest.size() : slash;
    }

    std::string_view m_Rest;
    std::size_t m_Size = 0;
};

inline bool HasLeadingSlash(std::string_view path) noexcept { return path.starts_with('/'); }

/// Whether the path ends with a slash that is not also its first character.
inline bool HasTrailingSlash(std::string_view path) noexcept { return path.size() > 1 && path.ends_with('/'); }

/// The text behind the last slash, or the whole text.
inline std::string_view LastSegment(std::string_view path) noexcept {
    const std::size_t slash = FindLast(path, '/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

/// False if a segment is empty or begins with a dot. Paths for which this is true can be cut and joined as text.
template <class Block = Block16>
bool HasPlainSegments(std::string_view path) noexcept {
    if (path.starts_with('.')) {
        return false;
    }
    const BlockedText<Block> blocks(path);
    std::uint32_t slashBefore = 0;
    for (std::size_t i = 0; i < path.size(); i += BlockedText<Block>::kStep) {
        const auto part = blocks.At(i);
        const std::uint32_t slashes = part.block.Equals('/');
        const std::uint32_t follows = slashes << 1 | (i == part.start ? slashBefore : 0);
        if ((follows & part.block.template EqualsAny<'/', '.'>()) != 0) {
            return false;
        }
        slashBefore = slashes >> (BlockedText<Block>::kStep - 1);
    }
    return true;
}

/// Builds a path from segments, with one slash between two of them.
class PathBuilder {
public:
    PathBuilder(bool leadingSlash, std::uint64_t expectedSize) : m_Start(leadingSlash ? 1 : 0) {
        ReserveFor(m_Path, expectedSize);
        m_Path.append(m_Start, '/');
    }

    [[nodiscard]] bool IsEmpty() const noexcept { return m_Path.size() == m_Start; }
    void Push(std::string_view segment) {
        if (!IsEmpty()) {
            m_Path += '/';
        }
        m_Path += segment;
    }
    /// The last segment; not of an empty path.
    [[nodiscard]] std::string_view Top() const noexcept {
        return LastSegment(std::string_view(m_Path).substr(m_Start));
    }
    void Pop() {
        const std::size_t size = m_Path.size() - Top().size();
        m_Path.resize(size > m_Start ? size - 1 : size);
    }
    std::string Take(bool trailingSlash) && {
        if (trailingSlash && !IsEmpty()) {
            m_Path += '/';
        }
        return std::move(m_Path);
    }

private:
    std::string m_Path;
    std::size_t m_Start;
};

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

/// What `a` is to `b`; see URI::GetRelation.
RelationCode RelatePaths(std::string_view a, std::string_view b, bool caseSensitive) noexcept;

// RFC 2396, section 5.2, steps 6a to 6g, and its inverse.

/// The path that the path of a relative reference leads to from a base path: the base without its last segment,
/// followed by the reference, with dot segments removed. A path that ends in "." or ".." ends with "/"
/// afterwards. A ".." that has no segment left to cancel is kept if `keepsLeadingDots` and dropped otherwise.
/// Both paths are unescaped; the reference does not begin with "/".
std::string ResolvePath(std::string_view base, std::string_view reference, bool keepsLeadingDots);

/// A change of a path: its first `kept` bytes stay, and `added` follows them.
struct PathEdit {
    std::size_t kept;
    std::string_view added;
};

/// What ResolvePath does, as an edit of the base. Nothing if it takes more than an edit: if dot segments stand
/// elsewhere than at the start of the reference, or if they lead above the start of the base.
std::optional<PathEdit> FindPathEdit(std::string_view base, std::string_view reference) noexcept;

/// The reference that leads from a directory to `target`: a ".." for each segment of the directory that the two
/// do not share, then the target's segments that they do not share; "./" if that is nothing. Linear.
std::string RelativePath(std::string_view target, std::string_view baseDirectory, bool caseSensitive);

/// The change of a path to a reference that leads to it: "../", so many times, replaces its first bytes.
struct RelativeEdit {
    std::size_t dropped;
    std::size_t climbs;
};

/// What RelativePath gives with case for the directory of `base`, as an edit of the target. Nothing if one of the
/// paths does not begin with "/", or if a segment of the target or the directory is empty or begins with a dot.
std::optional<RelativeEdit> FindRelativeEdit(std::string_view target, std::string_view base) noexcept;
/// Makes that edit. Changes nothing if it throws.
void MakeEdit(std::string& target, RelativeEdit edit);

}  // namespace Lum::Internal
