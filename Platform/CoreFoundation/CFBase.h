// The base of the Core Foundation services for hosts that do not have them: types, and references.
//
// Names, arguments and constants are those of the services, but not the C linkage, so that a program
// which has the real ones from elsewhere can be linked with both. What a function named Create or Copy
// gives carries one reference that the caller owns; CFRetain adds one, CFRelease gives one back, and
// the last one frees the object. Counting is atomic. Not more is offered than is called.
#pragma once

#include <cstdint>

using CFTypeRef = const void*;
using CFAllocatorRef = const struct __CFAllocator*;  // NOLINT: the services' name
using CFIndex = long;
using Boolean = unsigned char;

/// The only allocator: the C++ library's.
constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;

/// Adds a reference and returns the object; `object` must not be null.
CFTypeRef CFRetain(CFTypeRef object);
/// Gives a reference back; `object` must not be null.
void CFRelease(CFTypeRef object);
