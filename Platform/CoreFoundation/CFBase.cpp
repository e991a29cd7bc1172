// References to objects of any kind.
#include "Platform/CoreFoundation/CFBase.h"

#include "Platform/CoreFoundation/CFObject.h"

CFTypeRef CFRetain(CFTypeRef object) {
    CoreFoundation::FromRef(object).Retain();
    return object;
}

void CFRelease(CFTypeRef object) { CoreFoundation::FromRef(object).Release(); }
