// The segments of a path, read and edited where they stand.
//
// URI::SetPath escapes a whole path afresh, and URI::SplitPath leaves empty segments out. A PathView shows every
// segment as stored, escapes and empty ones included; a PathEdit changes one of them and leaves every other byte as it
// was:
//
//     Lum::URI uri("http://h/a%2Fb//c");
//     Lum::PathEdit edit(uri);
//     edit.Replace(2, "50%");
//     edit.PutInto(uri);             // http://h/a%2Fb//50%25
//
// A "/" that begins the path is no part of a segment, it roots the path. Every other "/" divides two segments: "/a//b/"
// has four, "a", "", "b" and "", and both "" and "/" have none. Names are compared and given back as URI::Unescape
// reads them, and written as URI::SetPath writes them, with "/" escaped as well. "." and ".." are names like any other.
//
// Any bytes are accepted. Each operation is linear in the length of the path. Nothing throws but std::bad_alloc, which
// leaves path and URI as they were. Threads: as for std::string_view and std::string.
#pragma once

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/PieceText.h>
#include <Lum/URI.h>

namespace Lum {

namespace Internal {
/// The stored path of a URI, and what decides how it is read when it is printed.
struct StoredPath : URI {
    static constexpr std::string URI::*kMember = &StoredPath::m_Path;
    static constexpr std::string URI::*kHost = &StoredPath::m_Authority;
    static constexpr std::string URI::*kScheme = &StoredPath::m_Scheme;

    static const std::string& Of(const URI& uri) noexcept { return uri.*kMember; }
    static const std::string& Of(const std::string& text) noexcept { return text; }
};
}  // namespace Internal

/// A segment as it stands in a path.
struct PathSegment {
    constexpr explicit PathSegment(std::string_view stored) noexcept : text(stored) {}

    /// The segment unescaped.
    [[nodiscard]] std::string GetName() const { return URI::Unescape(text, false); }

    std::string_view text;  ///< The stored segment, a view of the path.
};

/// The segments of a path as a forward range of PathSegment. A view: the path must outlive it unchanged.
class PathView : public Internal::PieceView<PathSegment, '/'> {
public:
    static constexpr std::size_t npos = std::string_view::npos;  ///< What Find gives for "none".

    /// Of the text of an escaped path.
    constexpr explicit PathView(std::string_view path LUM_LIFETIMEBOUND) noexcept
        : PieceView(path.substr(path.starts_with('/') ? 1 : 0)), m_IsRooted(path.starts_with('/')) {}
    /// Of a URI's path, until the URI changes, or of a string. A temporary one is refused by compilers that see it.
    template <class Owner>
    requires std::derived_from<Owner, URI> || std::same_as<Owner, std::string>
    explicit PathView(const Owner& owner LUM_LIFETIMEBOUND) noexcept
        : PathView(std::string_view(Internal::StoredPath::Of(owner))) {}

    /// Whether a "/" begins the path.
    [[nodiscard]] constexpr bool IsRooted() const noexcept { return m_IsRooted; }
    /// The index of the first segment from index `from` on whose unescaped name is `name`, or npos.
    [[nodiscard]] std::size_t Find(std::string_view name, std::size_t from = 0) const {
        return FindFrom(from, [&](const PathSegment& segment) { return segment.GetName() == name; });
    }

private:
    bool m_IsRooted;
};

/// A path of its own that is edited, and then put into a URI.
class PathEdit {
public:
    /// Of the text of an escaped path.
    explicit PathEdit(std::string_view path)
        : m_IsRooted(path.starts_with('/')), m_Segments(path.substr(m_IsRooted ? 1 : 0)) {}
    /// Of a copy of a URI's path.
    template <std::derived_from<URI> AnyURI>
    explicit PathEdit(const AnyURI& uri) : PathEdit(std::string_view(uri.*Internal::StoredPath::kMember)) {}

    /// The path as it is now.
    [[nodiscard]] std::string GetText() const { return (m_IsRooted ? "/" : "") + m_Segments.Get(); }
    /// How many segments there are.
    [[nodiscard]] std::size_t GetCount() const noexcept { return Segments().size(); }
    /// The index of the first segment from index `from` on whose unescaped name is `name`, or PathView::npos.
    [[nodiscard]] std::size_t Find(std::string_view name, std::size_t from = 0) const {
        return Segments().FindFrom(from, [&](const PathSegment& segment) { return segment.GetName() == name; });
    }

    /// Adds a segment behind the last one. An empty name gives the path a "/" at its end. Behind such a "/" there is an
    /// empty segment, which Append leaves where it is: "/a/" and "b" make "/a//b"; Replace makes "/a/b" of them.
    void Append(std::string_view name) { Insert(PathView::npos, name); }
    /// Adds a segment in front of the one at `index`, behind the last one where there is none.
    void Insert(std::size_t index, std::string_view name) { m_Segments.Insert(index, Written(name)); }
    /// Puts a segment in the place of the one at `index`; false, without a change, where there is none.
    bool Replace(std::size_t index, std::string_view name) { return m_Segments.Replace(index, Written(name)); }
    /// Removes the segment at `index` and one "/" beside it; false, without a change, where there is none.
    bool Remove(std::size_t index) { return m_Segments.Remove(index); }
    /// Puts a "/" before the first segment, or takes it away.
    void SetRooted(bool isRooted) noexcept { m_IsRooted = isRooted; }

    /// Makes this the path of `uri`, which becomes hierarchical as by URI::SetPath. Where the path, printed, would read
    /// as something else, a "/", "./" or "/." goes before it: of "http://h" and "a", of the relative reference "b:c",
    /// of a path that begins with an empty segment where there is no host. A path that is the URI's already stays.
    void PutInto(URI& uri) const {
        if (uri.IsHierarchical() && uri.*Internal::StoredPath::kMember == GetText()) {
            return;
        }
        std::string path = GuardFor(uri) + GetText();
        uri.SetPath("");
        uri.*Internal::StoredPath::kMember = std::move(path);
        uri.SetHierState(true);
    }

private:
    static std::string Written(std::string_view name) { return URI::EscapeChars(name, URI::URIexcluded + '/'); }
    [[nodiscard]] Internal::PieceView<PathSegment, '/'> Segments() const noexcept {
        return Internal::PieceView<PathSegment, '/'>(m_Segments.Get());
    }
    /// Whether the first segment is empty and others follow it.
    [[nodiscard]] bool StartsEmpty() const noexcept { return m_Segments.Get().starts_with('/'); }
    [[nodiscard]] const char* GuardFor(const URI& uri) const {
        const std::string& segments = m_Segments.Get();
        const std::string& scheme = uri.*Internal::StoredPath::kScheme;
        const bool hasHost = !(uri.*Internal::StoredPath::kHost).empty();
        if (m_IsRooted) {
            return StartsEmpty() && !hasHost ? "/." : "";
        }
        // These print "//" before the path.
        if (hasHost || scheme == "file") {
            return segments.empty() ? "" : (StartsEmpty() && !hasHost ? "/./" : "/");
        }
        // A path makes the empty state, whose scheme is "unknown", a relative reference.
        const bool isRelative = scheme.empty() || scheme == "unknown";
        const bool readsAsScheme = isRelative && segments.find(':') < segments.find('/');
        return StartsEmpty() || readsAsScheme ? "./" : "";
    }

    bool m_IsRooted;
    Internal::PieceText<'/'> m_Segments;
};

}  // namespace Lum
