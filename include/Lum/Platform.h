// Host set-up: what the operating system would know, on hosts without its services; and what gives back
// the objects of those services that this library's operations hand out.
//
// The set-up is to be called before other threads use the library; may be called from static initialisers.
#pragma once

#include <string>

#include <Lum/Export.h>

namespace Lum::Platform {

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
