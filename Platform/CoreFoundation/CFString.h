// Core Foundation strings: immutable text made from bytes of UTF-8 and read back as such.
#pragma once

#include "Platform/CoreFoundation/CFBase.h"

using CFStringRef = const struct __CFString*;  // NOLINT: the services' name
using CFStringEncoding = std::uint32_t;

constexpr CFStringEncoding kCFStringEncodingUTF8 = 0x08000100;

/// A string from a NUL-terminated text; null if the encoding is not UTF-8 or the text not valid in it.
CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text, CFStringEncoding encoding);
/// The length in UTF-16 code units.
CFIndex CFStringGetLength(CFStringRef string);
/// The bytes that `length` UTF-16 code units can take at most, without a NUL; -1 if no CFIndex holds it.
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
/// Writes the text and a NUL to a buffer of `size` bytes; false, with nothing of use in the buffer, if
/// they do not fit or the encoding is not UTF-8.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding);
