// Host set-up: what the operating system would know, on hosts without its services; and what gives back
// the objects of those services that this library's operations hand out.
//
// The set-up is to be called before other threads use the library; may be called from static initialisers.
#pragma once

#include <cstdint>
#include <string>

#include <Lum/Export.h>

namespace Lum::Platform {

/// Takes the script and the code set from a POSIX locale name: with "ja_JP.eucJP" the system's script is
/// Japanese, of two-byte characters, and the application's encoding EUC-JP unless another was set. Any
/// language but Japanese, Korean and Chinese is Roman, as is an empty name. Without a call, the name in
/// LC_ALL, LC_CTYPE or LANG, in that order.
LUM_API void SetLocale(const std::string& posixName);

/// Sets the encoding of the application's narrow texts, as a TextEncoding number: 0x08000100 is UTF-8.
/// Without a call, or with 0xFFFF, the locale's code set: UTF-8 for "C", and where none is named or it
/// is not known.
LUM_API void SetApplicationTextEncoding(std::uint32_t textEncoding);

/// Names the volume that the POSIX path "/" is on in colon-separated paths, in UTF-8; "Macintosh HD"
/// without a call. Every other volume is the folder of its name below "/Volumes". A name is not empty
/// and holds neither ":" nor NUL; with any other, paths of that volume are not read back.
LUM_API void SetStartupVolumeName(const std::string& utf8);

}  // namespace Lum::Platform

/// Any object of Core Foundation, such as a CFStringRef. It goes with its last reference; counting is
/// atomic, so an object may be used and given back on any thread.
using CFTypeRef = const void*;

/// Adds a reference, to be given back with CFRelease, and returns `object`; null stays null.
LUM_API CFTypeRef CFRetain(CFTypeRef object);
/// Gives a reference back: one that CFRetain added or that came with a function named Create. Null is
/// ignored.
LUM_API void CFRelease(CFTypeRef object);
