// Keeps a URL as its POSIX path. A colon-separated path is converted when a URL is made and when it is read.
//
// The volume of "/" has a name; every other volume is a folder in "/Volumes". Inside the name of a file, ":"
// and "/" are exchanged between the two styles, because the separator of one style is an ordinary character in
// the other.
#include "Platform/CoreFoundation/CoreFoundation.h"

#include <algorithm>
#include <limits>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Platform.h>

#include "Platform/CoreFoundation/CFObject.h"

using namespace Lum::Internal;

namespace {

constexpr std::string_view kVolumes = "/Volumes/";

/// A local static object works in static initialisers too. It is never destroyed, so that static destructors
/// can still read it.
std::string& StartupVolume() {
    static auto* const name = new std::string("Macintosh HD");
    return *name;
}

/// The path in UTF-8; "" if the string has a NUL or an unpaired surrogate.
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
    // A relative path is on no volume. In the colon-separated style it begins with ":".
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
