// Core Foundation URLs, as far as file-system paths go: made from a path of one style, read in another.
#pragma once

#include "Platform/CoreFoundation/CFBase.h"
#include "Platform/CoreFoundation/CFString.h"

using CFURLRef = const struct __CFURL*;  // NOLINT: the services' name
using CFURLPathStyle = CFIndex;

constexpr CFURLPathStyle kCFURLPOSIXPathStyle = 0;
constexpr CFURLPathStyle kCFURLHFSPathStyle = 1;

/// A URL from a path; null if the path is empty, a colon-separated one that begins with ":", or of an
/// unknown style. A separator at the end is dropped.
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory);
/// The path in a style; null if the style is unknown.
CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);
