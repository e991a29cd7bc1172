// A string from and to the records that file and resource names are kept in: HFS names in UTF-16, and
// Pascal strings in the application's encoding.
#include <Lum/CString.h>

#include <algorithm>

#include "Platform/CoreFoundation/CFString.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "cstring/OwnedString.h"

using Lum::OwnedString;

namespace {

constexpr int kLongestHfsName = 255;

/// Copies `count` units, of which those from the first 0 on are 0.
void CopyName(unsigned short* to, const unsigned short* from, int count) {
    const unsigned short* const end = std::find(from, from + count, 0);
    std::fill(std::copy(from, end, to), to + count, static_cast<unsigned short>(0));
}

UniChar UnitAt(CFStringRef string, CFIndex index) {
    UniChar unit = 0;
    CFStringGetCharacters(string, CFRangeMake(index, 1), &unit);
    return unit;
}

/// The first units of a string, at most `most`, one less where they would end inside a surrogate pair.
OwnedString CutTo(OwnedString string, CFIndex most) {
    if (CFStringGetLength(string.get()) <= most) {
        return string;
    }
    const bool halvesPair = most > 0 && (UnitAt(string.get(), most - 1) & 0xFC00) == 0xD800 &&
                            (UnitAt(string.get(), most) & 0xFC00) == 0xDC00;
    return OwnedString(
        CFStringCreateWithSubstring(kCFAllocatorDefault, string.get(), CFRangeMake(0, halvesPair ? most - 1 : most)));
}

}  // namespace

void CString::GetHFSUniStr255(HFSUniStr255* name) const {
    if (name != nullptr) {
        const int count = std::min(GetLength(), kLongestHfsName);
        CopyName(name->unicode, m_pchChars, count);
        name->length = static_cast<unsigned short>(count);
        if (count < kLongestHfsName) {
            name->unicode[count] = 0;
        }
    }
}

void CString::SetFromHFSUniStr255(const HFSUniStr255* name) {
    if (name != nullptr) {
        unsigned short units[kLongestHfsName];
        const int count = std::min<int>(name->length, kLongestHfsName);
        CopyName(units, name->unicode, count);
        AssignCopy(count, units);
    }
}

void CString::FromMac(const unsigned char* pascal) {
    const TextEncoding encoding = GetApplicationTextEncoding();
    const OwnedString string(CFStringCreateWithPascalString(kCFAllocatorDefault, pascal, encoding));
    SetFromCFStringRef(string.get(), encoding);
}

void CString::ToMac(unsigned char* pascal, long size) const {
    if (pascal == nullptr || size <= 0) {
        return;
    }
    const TextEncoding encoding = GetApplicationTextEncoding();
    const OwnedString string = CutTo(OwnedString(GetCFStringRef(encoding)), size - 1);
    // The service is told of one byte less than there is. That is no slip: a text of size - 1 bytes is
    // not written, though it would fit.
    pascal[0] = 0;
    CFStringGetPascalString(string.get(), pascal, size - 1, encoding);
}
