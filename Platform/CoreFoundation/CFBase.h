// The base of the Core Foundation services for hosts that do not have them: types, and references.
//
// Names, arguments and constants are those of the services, but not the C linkage, so that a program
// which has the real ones from elsewhere can be linked with both. What a function named Create or Copy
// gives carries one reference that the caller owns; CFRetain adds one, CFRelease gives one back, and
// the last one frees the object; those two are declared where a program finds them too. Counting is
// atomic. Not more is offered than is called.
#pragma once

#include <cstdint>

#include <Lum/Platform.h>

using CFAllocatorRef = const struct __CFAllocator*;  // NOLINT: the services' name
using CFIndex = long;
using CFTypeID = unsigned long;
using Boolean = unsigned char;
using UniChar = unsigned short;

/// A part of a text or list; what lies outside of it is left out.
struct CFRange {
    CFIndex location;
    CFIndex length;
};

/// The only allocator: the C++ library's.
constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;
/// Frees nothing: the deallocator of content that stays its owner's.
extern const CFAllocatorRef kCFAllocatorNull;

constexpr CFRange CFRangeMake(CFIndex location, CFIndex length) noexcept { return {location, length}; }

/// Which kind of object this is; `object` must not be null.
CFTypeID CFGetTypeID(CFTypeRef object);
