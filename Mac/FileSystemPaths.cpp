// Calls the host's string and URL services.
#include "Mac/FileSystemPaths.h"

#include <limits>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

#include "Platform/CoreFoundation/CoreFoundation.h"

using namespace Lum::Internal;

namespace Lum::Internal::Mac {
namespace {

struct Release {
    void operator()(CFTypeRef object) const noexcept { CFRelease(object); }
};

/// Owns one reference, and releases it.
template <class Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

std::string TextOf(CFStringRef string) {
    const CFIndex size = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8);
    if (size < 0 || size == std::numeric_limits<CFIndex>::max()) {
        throw std::bad_alloc();
    }
    // One byte more for the NUL, which the maximum size does not include.
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

}  // namespace Lum::Internal::Mac
