// The Core Foundation services for hosts that do not have them: references, arrays, strings, paths, and the
// localised strings of the main bundle.
//
// Names, arguments and constants are those of the services, but not the C linkage, so that a program that
// has the real services from elsewhere can be linked with both. Only what the library calls is here.
//
// A function named Create or Copy returns a reference that the caller owns and ends with CFRelease.
// CFRetain adds a reference; the release of the last one frees the object. These two are declared in
// <Lum/Platform.h>, because a program needs them as well. The counts are atomic. Where memory runs out,
// std::bad_alloc is thrown.
#pragma once

#include <cstdint>

#include <Lum/Platform.h>

#include "Platform/TextEncoding/TextEncodingConverter.h"

using CFAllocatorRef = const struct __CFAllocator*;  // NOLINT: the services' name
using CFIndex = long;
using CFTypeID = unsigned long;
using Boolean = unsigned char;
using UniChar = unsigned short;

/// A part of a text. What lies outside of the text is ignored.
struct CFRange {
    CFIndex location;
    CFIndex length;
};

/// The only allocator, which is that of the C++ library.
constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;
/// As a deallocator: frees nothing, because the content belongs to the caller.
extern const CFAllocatorRef kCFAllocatorNull;

constexpr CFRange CFRangeMake(CFIndex location, CFIndex length) noexcept { return {location, length}; }

/// The kind of an object, which must not be null.
CFTypeID CFGetTypeID(CFTypeRef object);

// ---- Arrays: lists of pointers -------------------------------------------------------------------

using CFArrayRef = const struct __CFArray*;   // NOLINT: the services' name
using CFMutableArrayRef = struct __CFArray*;  // NOLINT: the services' name

/// What an array calls when a pointer is added and when the array is freed; null for nothing.
struct CFArrayCallBacks {
    CFIndex version;
    const void* (*retain)(CFAllocatorRef allocator, const void* value);
    void (*release)(CFAllocatorRef allocator, const void* value);
};

/// For values that are objects of these services.
extern const CFArrayCallBacks kCFTypeArrayCallBacks;

/// An empty array. `capacity` is ignored. Without call-backs the array keeps pointers and no references.
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex capacity, const CFArrayCallBacks* callBacks);
/// Adds a value at the end and retains it.
void CFArrayAppendValue(CFMutableArrayRef array, const void* value);
/// The number of values; 0 for a null array.
CFIndex CFArrayGetCount(CFArrayRef array);
/// The value, to which the array keeps its reference; null for an index that the array does not have.
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

// ---- Strings: immutable text of UTF-16 code units ------------------------------------------------
//
// Units need not be well-formed UTF-16, except where another encoding is asked for. A string must not be
// null. Encodings are those of the converter service.

using CFStringRef = const struct __CFString*;  // NOLINT: the services' name
using CFStringEncoding = TextEncoding;

constexpr CFStringEncoding kCFStringEncodingMacRoman = 0;
constexpr CFStringEncoding kCFStringEncodingUTF16 = 0x0100;
constexpr CFStringEncoding kCFStringEncodingISOLatin1 = 0x0201;
constexpr CFStringEncoding kCFStringEncodingASCII = 0x0600;
constexpr CFStringEncoding kCFStringEncodingUTF8 = 0x08000100;

/// What CFGetTypeID gives for strings.
CFTypeID CFStringGetTypeID();

/// A copy of `count` units; null if `count` is negative, or `units` null and `count` is not 0.
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* units, CFIndex count);
/// The same without a copy: `units` must live as long as the string has references. Null for any other
/// deallocator than kCFAllocatorNull.
CFStringRef CFStringCreateWithCharactersNoCopy(CFAllocatorRef allocator, const UniChar* units, CFIndex count,
                                               CFAllocatorRef contentsDeallocator);
/// The units of a range of another string.
CFStringRef CFStringCreateWithSubstring(CFAllocatorRef allocator, CFStringRef string, CFRange range);

/// A string from a NUL-terminated text; null if the text is null or not valid in the encoding from end
/// to end, or the encoding is unknown.
CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text, CFStringEncoding encoding);
/// The same: since strings keep units, the text is copied all the same. Null for any other deallocator than
/// kCFAllocatorNull.
CFStringRef CFStringCreateWithCStringNoCopy(CFAllocatorRef allocator, const char* text, CFStringEncoding encoding,
                                            CFAllocatorRef contentsDeallocator);
/// The same from a length byte and as many bytes of text.
CFStringRef CFStringCreateWithPascalString(CFAllocatorRef allocator, const unsigned char* text,
                                           CFStringEncoding encoding);

/// The length in UTF-16 code units.
CFIndex CFStringGetLength(CFStringRef string);
/// Writes the units of a range, and no terminator.
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer);

/// The largest number of bytes, without a NUL, that `length` UTF-16 code units become; -1 if a CFIndex cannot
/// hold it.
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
/// Writes the text and a NUL to a buffer of `size` bytes. Returns false, with the empty text in the buffer
/// (if it has a byte), where they do not fit or the encoding lacks a character of the text.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding);
/// The same with a length byte before the text and no NUL; more than 255 bytes never fit.
Boolean CFStringGetPascalString(CFStringRef string, unsigned char* buffer, CFIndex size, CFStringEncoding encoding);

/// The decimal number at the start of the text, after ASCII white space, with or without a sign: 0 if there
/// is none, the nearest value if it is out of range. The locale is ignored.
std::int32_t CFStringGetIntValue(CFStringRef string);
/// The same with a fraction and an exponent; infinity where the number is too large.
double CFStringGetDoubleValue(CFStringRef string);

// ---- URLs, as far as file-system paths go --------------------------------------------------------

using CFURLRef = const struct __CFURL*;  // NOLINT: the services' name
using CFURLPathStyle = CFIndex;

constexpr CFURLPathStyle kCFURLPOSIXPathStyle = 0;
constexpr CFURLPathStyle kCFURLHFSPathStyle = 1;

/// A URL from a path. Null if the path is empty, if it is colon-separated and begins with ":", or if the
/// style is unknown. A separator at the end is dropped.
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory);
/// The path in a style; null if the style is unknown.
CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);

// ---- The main bundle: tables of localised strings ------------------------------------------------
//
// <Lum/Platform.h> says where a table is looked for. The first file that exists and is a table counts. It is
// read once. For one thread at a time.

using CFBundleRef = struct __CFBundle*;  // NOLINT: the services' name

/// The bundle that Lum::Platform::SetMainBundle names, or the executable's folder. The caller gets no
/// reference to it.
CFBundleRef CFBundleGetMainBundle();

/// The string of a key in a table; the table is "Localizable" if its name is null or empty. A key that is not
/// there gives `value`, or `key` if `value` is null or empty. The caller owns a reference to the result.
CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key, CFStringRef value, CFStringRef tableName);
