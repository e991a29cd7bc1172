// Calls the host's string and URL services. Every object made is released on every way out.
#include "Mac/FileSystemPaths.h"

#include <limits>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

#include "Platform/CoreFoundation/CFString.h"
#include "Platform/CoreFoundation/CFURL.h"

namespace Mac {
namespace {

struct Release {
    void operator()(CFTypeRef object) const noexcept { CFRelease(object); }
};

/// One reference, given back at the end.
template <class Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

std::string TextOf(CFStringRef string) {
    const CFIndex size = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8);
    if (size < 0 || size == std::numeric_limits<CFIndex>::max()) {
        throw std::bad_alloc();
    }
    // With room for the NUL, which the service's own maximum leaves out.
    std::string text(static_cast<std::size_t>(size) + 1, '\0');
    if (CFStringGetCString(string, text.data(), size + 1, kCFStringEncodingUTF8) == 0) {
        return {};
    }
    text.resize(text.find('\0'));
    return text;
}

std::string Convert(const std::string& path, CFURLPathStyle from, CFURLPathStyle to) {
    const Owned<CFStringRef> string(
        CFStringCreateWithCString(kCFAllocatorDefault, path.c_str(), kCFStringEncodingUTF8));
    if (!string) {
        return {};
    }
    const Owned<CFURLRef> url(CFURLCreateWithFileSystemPath(kCFAllocatorDefault, string.get(), from, 0));
    if (!url) {
        return {};
    }
    const Owned<CFStringRef> converted(CFURLCopyFileSystemPath(url.get(), to));
    return converted ? TextOf(converted.get()) : std::string();
}

}  // namespace

std::string PosixToColonPath(const std::string& path) {
    return Convert(path, kCFURLPOSIXPathStyle, kCFURLHFSPathStyle);
}

std::string ColonToPosixPath(const std::string& path) {
    return Convert(path, kCFURLHFSPathStyle, kCFURLPOSIXPathStyle);
}

}  // namespace Mac
