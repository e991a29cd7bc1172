// A path as the segments between its slashes.
//
// Nothing is unescaped, and "." and ".." are segments like any other. Empty segments do not count
// ("a//b" reads like "a/b"); one slash at each end is told by a flag of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "Source/Base/Block16.h"
#include "Source/Base/BlockedText.h"
#include "Source/Base/ByteSearch.h"
#include "Source/Base/Lengths.h"

namespace Lum {

/// Walks over a path's segments as views, first to last.
class Segments {
public:
    explicit Segments(std::string_view path) noexcept : m_Rest(path) { SkipSlashes(); }

    [[nodiscard]] bool AtEnd() const noexcept { return m_Rest.empty(); }
    /// The segment that the walk has come to; not at the end.
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

/// Whether a slash ends the path that is not the one that begins it.
inline bool HasTrailingSlash(std::string_view path) noexcept { return path.size() > 1 && path.ends_with('/'); }

/// Whether no segment is empty or begins with a dot, as far as one look tells: what is neither may be
/// joined and cut as text.
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

inline std::size_t CountSegments(std::string_view path) noexcept {
    std::size_t count = 0;
    for (Segments segments(path); !segments.AtEnd(); segments.Next()) {
        ++count;
    }
    return count;
}

/// The text behind the last slash, or the whole text.
inline std::string_view LastSegment(std::string_view path) noexcept {
    const std::size_t slash = FindLast(path, '/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

/// A path put together segment by segment, each behind the one before it with a slash between.
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

}  // namespace Lum
