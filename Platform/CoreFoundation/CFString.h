// Core Foundation strings: immutable text of UTF-16 code units, made from such and from bytes of any
// encoding that the converter service knows.
//
// Units need not be well-formed UTF-16; only what is asked for in another encoding has to be. A string
// is never null, and a range is cut to what the string has.
#pragma once

#include "Platform/CoreFoundation/CFBase.h"

using CFStringRef = const struct __CFString*;  // NOLINT: the services' name
/// The numbers of the converter service's encodings.
using CFStringEncoding = std::uint32_t;

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
/// The same; the text is free to go, for strings keep units. Null for any other deallocator than
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

/// The bytes that `length` UTF-16 code units can take at most, without a NUL; -1 if no CFIndex holds it.
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
/// Writes the text and a NUL to a buffer of `size` bytes; false, with the empty text in any buffer, if
/// they do not fit or the encoding cannot say the text.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding);
/// The same with a length byte in front and no NUL; more than 255 bytes never fit.
Boolean CFStringGetPascalString(CFStringRef string, unsigned char* buffer, CFIndex size, CFStringEncoding encoding);

/// The decimal number that the text begins with, behind ASCII white space, with or without a sign; 0 if
/// there is none, the nearest value if it is out of range. No locale, no other notation.
std::int32_t CFStringGetIntValue(CFStringRef string);
/// The same with a fraction and an exponent; an infinity where it is too large.
double CFStringGetDoubleValue(CFStringRef string);
