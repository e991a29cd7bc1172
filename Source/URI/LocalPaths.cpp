// "file" URIs from and to local paths in the styles of Windows, Unix and the classic Mac.
//
// Everything here is about text; no file is accessed. To convert between the colon-separated and the POSIX style,
// the host is asked, because it knows its volumes.
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Mac/FileSystemPaths.h"
#include "Source/URI/Scheme.h"

namespace Lum {

using namespace Internal;

namespace {

enum class PathStyle { Mac, Unix, Win };

// Set by the build: the style of the two operations that name none.
constexpr PathStyle kNativePaths = PathStyle::LUM_NATIVE_PATHS;

std::string Replaced(std::string text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

std::string WithoutLeadingSlash(std::string path) {
    path.erase(0, path.starts_with('/') ? 1 : 0);
    return path;
}

std::string WithLeadingSlash(std::string path) { return path.starts_with('/') ? path : '/' + path; }

}  // namespace

URI::StringProxy URI::ToLocalPath() const {
    switch (kNativePaths) {
        case PathStyle::Unix:
            return ToLocalPathUnix();
        case PathStyle::Win:
            return ToLocalPathWin();
        case PathStyle::Mac:
            break;
    }
    return ToLocalPathMac();
}

URI::StringProxy URI::ToLocalPathMac() const {
    if (m_Scheme != kFileScheme) {
        return IsRelative() ? ':' + Replaced(GetPath(), '/', ':') : std::string();
    }
    const std::string host = GetAuthority();
    if (host == "localhost") {
        return Mac::PosixToColonPath(GetPath());
    }
    return host.empty() ? Replaced(WithoutLeadingSlash(GetPath()), '/', ':') : std::string();
}

URI::StringProxy URI::ToLocalPathUnix() const {
    if (m_Scheme != kFileScheme) {
        return IsRelative() ? GetPath() : std::string();
    }
    if (!GetAuthority().empty()) {
        // Compatibility: "localhost" too, although the Mac form accepts it. Callers of this form
        // take "" to mean that the URI names a host.
        return "";
    }
    return Mac::ColonToPosixPath(ToLocalPathMac());
}

URI::StringProxy URI::ToLocalPathWin() const {
    if (m_Scheme != kFileScheme) {
        return IsRelative() ? Replaced(GetPath(), '/', '\\') : std::string();
    }
    const std::string host = GetAuthority();
    // Compatibility: "localhost" counts as a server like any other, so that UNC paths with it come back unchanged.
    std::string path = host.empty() ? WithoutLeadingSlash(GetPath()) : "//" + host + GetPath();
    return Replaced(Replaced(std::move(path), '/', '\\'), '|', ':');
}

void URI::LocalPathToURI(StringProxy path) {
    switch (kNativePaths) {
        case PathStyle::Unix:
            return LocalPathToURIUnix(std::move(path));
        case PathStyle::Win:
            return LocalPathToURIWin(std::move(path));
        case PathStyle::Mac:
            break;
    }
    LocalPathToURIMac(std::move(path));
}

void URI::LocalPathToURIMac(StringProxy path) {
    SetParts(kFileScheme, "", "", WithLeadingSlash(Replaced(std::move(path.m_Text), ':', '/')), "", "");
}

void URI::LocalPathToURIUnix(StringProxy path) {
    SetParts(kFileScheme, "", "", WithLeadingSlash(std::move(path.m_Text)), "", "");
}

void URI::LocalPathToURIWin(StringProxy path) {
    std::string rest = Replaced(std::move(path.m_Text), '\\', '/');
    std::string server;
    if (rest.starts_with("//")) {
        const std::size_t slash = std::min(rest.find('/', 2), rest.size());
        server = rest.substr(2, slash - 2);
        rest.erase(0, slash);
    }
    if (!rest.empty()) {
        // Compatibility: every ":", not only a drive's. ToLocalPathWin changes every "|" back.
        rest = Replaced(WithLeadingSlash(std::move(rest)), ':', '|');
    }
    SetParts(kFileScheme, std::move(server), "", std::move(rest), "", "");
}

}  // namespace Lum
