// References to objects of any kind.
#include "Platform/CoreFoundation/CFBase.h"

#include "Platform/CoreFoundation/CFObject.h"

struct __CFAllocator {};  // NOLINT: the services' name

namespace {

constexpr __CFAllocator kNull;

}  // namespace

constinit const CFAllocatorRef kCFAllocatorNull = &kNull;

CFTypeRef CFRetain(CFTypeRef object) {
    if (object != nullptr) {
        CoreFoundation::FromRef(object).Retain();
    }
    return object;
}

void CFRelease(CFTypeRef object) {
    if (object != nullptr) {
        CoreFoundation::FromRef(object).Release();
    }
}

CFTypeID CFGetTypeID(CFTypeRef object) { return static_cast<CFTypeID>(CoreFoundation::FromRef(object).GetKind()); }
