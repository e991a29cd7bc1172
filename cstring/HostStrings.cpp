// The host's strings from and to an application's texts.
#include <Lum/HostStrings.h>

#include <algorithm>
#include <cstddef>

#include "Platform/CoreFoundation/CFString.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "Source/Base/UnitSearch.h"

namespace {

CFStringEncoding EncodingOf(unsigned long encoding) {
    constexpr CFStringEncoding kApplications = 0xFFFFFFFF;
    const auto number = static_cast<CFStringEncoding>(encoding);
    return number == kApplications ? GetApplicationTextEncoding() : number;
}

CFIndex LengthOf(const unsigned short* text, long length) {
    return text == nullptr || length >= 0 ? length : static_cast<CFIndex>(Lum::CountUnits(text));
}

}  // namespace

CFStringRef CFStringCreateWithLPCSTR(const char* text, long /*length*/, unsigned long encoding) {
    return CFStringCreateWithCString(kCFAllocatorDefault, text, EncodingOf(encoding));
}

CFStringRef CFStringCreateWithLPCSTRNoCopy(const char* text, long /*length*/, unsigned long encoding) {
    return CFStringCreateWithCStringNoCopy(kCFAllocatorDefault, text, EncodingOf(encoding), kCFAllocatorNull);
}

CFStringRef CFStringCreateWithLPCWSTR(Lum::UnitPointer text, long length, unsigned long /*encoding*/) {
    return text == nullptr ? nullptr : CFStringCreateWithCharacters(kCFAllocatorDefault, text, LengthOf(text, length));
}

CFStringRef CFStringCreateWithLPCWSTRNoCopy(Lum::UnitPointer text, long length, unsigned long /*encoding*/) {
    return text == nullptr ? nullptr
                           : CFStringCreateWithCharactersNoCopy(kCFAllocatorDefault, text, LengthOf(text, length),
                                                                kCFAllocatorNull);
}

void CFStringGetLPWSTR(CFStringRef string, unsigned short* buffer, long max, unsigned long /*encoding*/) {
    if (buffer == nullptr) {
        return;
    }
    const CFIndex length = string == nullptr ? 0 : std::clamp<CFIndex>(max, 0, CFStringGetLength(string));
    if (length > 0) {
        CFStringGetCharacters(string, CFRangeMake(0, length), buffer);
    }
    buffer[length] = 0;
}

void CFStringGetLPSTR(CFStringRef string, char* buffer, long size, unsigned long encoding) {
    if (buffer == nullptr || size <= 0) {
        return;
    }
    if (string == nullptr) {
        buffer[0] = '\0';
    } else {
        CFStringGetCString(string, buffer, size, EncodingOf(encoding));
    }
}
