// Keeps a URL as its POSIX path, and converts at the edges.
//
// The volume that "/" is on has a name; every other volume is a folder of "/Volumes". Inside a name
// ":" and "/" change places between the styles, because each is the other's separator.
#include "Platform/CoreFoundation/CFURL.h"

#include <algorithm>
#include <limits>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Platform.h>

#include "Platform/CoreFoundation/CFStringObject.h"

namespace {

constexpr std::string_view kVolumes = "/Volumes/";

/// Function-local, so that it can be asked and set from static initialisers.
std::string& StartupVolume() {
    static std::string name = "Macintosh HD";
    return name;
}

/// The path that a string says; "" where it is no path, for a NUL or a surrogate on its own.
std::string PathOf(CFStringRef string) {
    const std::span<const UniChar> units = CoreFoundation::String::From(string).Units();
    const CFIndex most = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8);
    if (most < 0 || most == std::numeric_limits<CFIndex>::max()) {
        throw std::bad_alloc();
    }
    std::string path(static_cast<std::size_t>(most) + 1, '\0');
    if (std::find(units.begin(), units.end(), 0) != units.end() ||
        CFStringGetCString(string, path.data(), most + 1, kCFStringEncodingUTF8) == 0) {
        return {};
    }
    path.resize(path.find('\0'));
    return path;
}

std::string SeparatorsSwapped(std::string_view path) {
    std::string swapped(path);
    for (char& c : swapped) {
        c = c == '/' ? ':' : (c == ':' ? '/' : c);
    }
    return swapped;
}

std::string ToPosix(std::string_view colonPath) {
    const std::size_t end = colonPath.find(':');
    const std::string_view volume = colonPath.substr(0, end);
    if (volume != StartupVolume()) {
        return std::string(kVolumes) + SeparatorsSwapped(colonPath);
    }
    return end == std::string_view::npos ? "/" : SeparatorsSwapped(colonPath.substr(end));
}

std::string ToColons(std::string_view posixPath) {
    if (posixPath == "/") {
        return StartupVolume();
    }
    if (posixPath.starts_with(kVolumes) && posixPath.substr(kVolumes.size()).find('/') != 0) {
        return SeparatorsSwapped(posixPath.substr(kVolumes.size()));
    }
    // What is not absolute is on no volume: it begins with ":", as such paths do.
    return posixPath.starts_with('/') ? StartupVolume() + SeparatorsSwapped(posixPath)
                                      : ':' + SeparatorsSwapped(posixPath);
}

class Url final : public CoreFoundation::Object {
public:
    explicit Url(std::string posixPath) : m_PosixPath(std::move(posixPath)) {}

    [[nodiscard]] const std::string& PosixPath() const noexcept { return m_PosixPath; }
    [[nodiscard]] CFURLRef Ref() const noexcept {
        return static_cast<CFURLRef>(static_cast<CFTypeRef>(static_cast<const Object*>(this)));
    }
    static const Url& From(CFURLRef url) noexcept { return static_cast<const Url&>(CoreFoundation::FromRef(url)); }

private:
    std::string m_PosixPath;
};

}  // namespace

namespace Lum::Platform {

void SetStartupVolumeName(const std::string& utf8) { StartupVolume() = utf8; }

}  // namespace Lum::Platform

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef /*allocator*/, CFStringRef path, CFURLPathStyle style,
                                       Boolean /*isDirectory*/) {
    const std::string whole = PathOf(path);
    std::string_view text = whole;
    const bool isPosix = style == kCFURLPOSIXPathStyle;
    if (text.empty() || (!isPosix && (style != kCFURLHFSPathStyle || text.front() == ':'))) {
        return nullptr;
    }
    if (text.size() > 1 && text.back() == (isPosix ? '/' : ':')) {
        text.remove_suffix(1);
    }
    return (new Url(isPosix ? std::string(text) : ToPosix(text)))->Ref();
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style) {
    const std::string& path = Url::From(url).PosixPath();
    if (style != kCFURLPOSIXPathStyle && style != kCFURLHFSPathStyle) {
        return nullptr;
    }
    return CFStringCreateWithCString(kCFAllocatorDefault,
                                     style == kCFURLPOSIXPathStyle ? path.c_str() : ToColons(path).c_str(),
                                     kCFStringEncodingUTF8);
}
