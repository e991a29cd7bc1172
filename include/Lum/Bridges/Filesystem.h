// URIs and std::filesystem::path.
//
// ToPath and FromPath are the local-path operations of a URI, in the style that the caller names. A
// std::filesystem::path of another system's style is for writing down, not for opening files. In Unix style the two are
// not each other's reverse, because there the first name of a path in a URI is a volume:
// "/home/x" gives "file:///home/x", which leads to "/Volumes/home/x".
//
// ToFilePath and FromFilePath are for files of this machine and each other's reverse, by RFC 8089: "file:///home/x" is
// "/home/x". Use them to open what a URI names.
//
// Bytes of a path are taken as they are, so on Linux a name need not be UTF-8. No file is accessed.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>

#include <Lum/PathView.h>
#include <Lum/URI.h>

namespace Lum {

/// How a local path is written.
enum class PathStyle {
    Mac,   ///< "Disk:Folder:File"
    Unix,  ///< "/Folder/File", "/Volumes/Disk/File"
    Win,   ///< Drives or servers, and backslashes.
};

namespace Internal {

inline std::string BytesOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

inline std::filesystem::path PathOf(std::string_view bytes) {
    std::u8string text(bytes.size(), u8'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) { return static_cast<char8_t>(byte); });
    return text;
}

}  // namespace Internal

/// What ToLocalPathMac, ToLocalPathUnix or ToLocalPathWin gives; an empty path where the URI has none in that style.
[[nodiscard]] inline std::filesystem::path ToPath(const URI& uri, PathStyle style) {
    const URI::StringProxy text = style == PathStyle::Mac    ? uri.ToLocalPathMac()
                                  : style == PathStyle::Unix ? uri.ToLocalPathUnix()
                                                             : uri.ToLocalPathWin();
    return Internal::PathOf(static_cast<const std::string&>(text));
}

/// The URI that LocalPathToURIMac, LocalPathToURIUnix or LocalPathToURIWin makes of the path.
[[nodiscard]] inline URI FromPath(const std::filesystem::path& path, PathStyle style) {
    URI uri;
    const std::string text = Internal::BytesOf(path);
    if (style == PathStyle::Mac) {
        uri.LocalPathToURIMac(text);
    } else if (style == PathStyle::Unix) {
        uri.LocalPathToURIUnix(text);
    } else {
        uri.LocalPathToURIWin(text);
    }
    return uri;
}

/// The file of this machine that a "file" URI names; query and fragment do not count. An empty path for any other URI,
/// for a host that is neither empty nor "localhost", and where no file can have the name: an escape stands for a NUL,
/// which would end the name early, or for a "/", which would divide it.
[[nodiscard]] inline std::filesystem::path ToFilePath(const URI& uri) {
    const std::string host = uri.GetAuthority();
    if (!uri.IsValidURI() || !uri.IsOfType("file") || !(host.empty() || host == "localhost")) {
        return {};
    }
    for (const PathSegment segment : PathView(uri)) {
        if (const std::string name = segment.GetName(); name.find('/') != name.npos || name.find('\0') != name.npos) {
            return {};
        }
    }
    return Internal::PathOf(uri.GetPath());
}

/// The "file" URI of an absolute path: "/a b" is "file:///a%20b". The empty state for a relative path, see
/// std::filesystem::absolute, and for a path with a NUL in it. Several "/" in front count as one, for in the text of a
/// URI a host would follow them.
[[nodiscard]] inline URI FromFilePath(const std::filesystem::path& path) {
    std::string text = Internal::BytesOf(path);
    if (!path.is_absolute() || text.find('\0') != text.npos) {
        return {};
    }
    text.erase(0, std::min(text.find_first_not_of('/'), text.size()));
    // Escaped as a whole: SetPath leaves "/?|" as it is, for it takes that for a drive.
    return URI("file:///" + static_cast<const std::string&>(URI::Escape(text)));
}

}  // namespace Lum
