// Core Foundation arrays: lists of pointers, which hold a reference to each where they are told how.
#pragma once

#include "Platform/CoreFoundation/CFBase.h"

using CFArrayRef = const struct __CFArray*;   // NOLINT: the services' name
using CFMutableArrayRef = struct __CFArray*;  // NOLINT: the services' name

/// What an array does with a pointer that it takes up or gives up; null for nothing.
struct CFArrayCallBacks {
    CFIndex version;
    const void* (*retain)(CFAllocatorRef allocator, const void* value);
    void (*release)(CFAllocatorRef allocator, const void* value);
};

/// For values that are objects of these services.
extern const CFArrayCallBacks kCFTypeArrayCallBacks;

/// An empty array; `capacity` is a hint. Without call-backs it keeps bare pointers.
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex capacity, const CFArrayCallBacks* callBacks);
/// Adds a value at the end and retains it.
void CFArrayAppendValue(CFMutableArrayRef array, const void* value);
/// The number of values; 0 for a null array.
CFIndex CFArrayGetCount(CFArrayRef array);
/// The value, which stays the array's; null outside of it.
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
