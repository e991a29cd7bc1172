// Strings and the host's services: text from and to the host's strings, narrow text in the application's
// encoding, numbers, the names of files and resources, and what the host's script says about bytes.
#include <Lum/CString.h>
#include <Lum/HostStrings.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Platform/CoreFoundation/CoreFoundation.h"
#include "Platform/Script/Script.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "Source/Base/UnitText.h"
#include "cstring/Buffer.h"
#include "cstring/HostOwners.h"

using namespace Lum::Internal;

// ---- The host's strings from and to an application's texts --------------------------------------

namespace {

CFStringEncoding EncodingOf(unsigned long encoding) {
    constexpr CFStringEncoding kApplications = 0xFFFFFFFF;
    const auto number = static_cast<CFStringEncoding>(encoding);
    return number == kApplications ? GetApplicationTextEncoding() : number;
}

CFIndex LengthOf(const unsigned short* text, long length) {
    return text == nullptr || length >= 0 ? length : static_cast<CFIndex>(CountUnits(text));
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
    } else if (CFStringGetCString(string, buffer, size, EncodingOf(encoding)) == 0) {
        std::fill_n(buffer, size, '\0');
    }
}

void Lum::Internal::ReleaseHostString(CFStringRef string) noexcept { CFRelease(string); }

// ---- Narrow text --------------------------------------------------------------------------------

namespace {

OwnedString FromApplicationText(const char* text) {
    return OwnedString(CFStringCreateWithCString(kCFAllocatorDefault, text, GetApplicationTextEncoding()));
}

bool IsResourceNumber(const char* text) noexcept { return reinterpret_cast<std::uintptr_t>(text) < 0x10000; }

int LengthOfBytes(const char* text) { return IsResourceNumber(text) ? 0 : AsLength(std::strlen(text)); }

}  // namespace

CString::CString(const char* text) : CString(text, LengthOfBytes(text)) {
    if (text != nullptr && IsResourceNumber(text)) {
        LoadString(static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(text)));
    }
}

CString::CString(const char* text, int length) : m_pchChars(EmptyText()) {
    if (length <= 0) {
        return;
    }
    // This stays the text where `text` is not valid in the encoding.
    AllocBuffer(length);
    if (!IsResourceNumber(text)) {
        *this = text;
    } else if (text != nullptr) {
        LoadString(static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(text)));
    }
}

CString& CString::operator=(const char* text) {
    if (text == nullptr) {
        AllocBeforeWrite(0);
        CopyBeforeWrite();
        SetLength(Data(), 0);
    } else if (const OwnedString string = FromApplicationText(text)) {
        SetFromCFStringRef(string.get(), GetApplicationTextEncoding());
    }
    return *this;
}

// ---- The host's strings -------------------------------------------------------------------------

CFStringRef CString::GetCFStringRef(unsigned long /*encoding*/) const {
    CStringData* const data = Data();
    if (data->cachedCFString == nullptr) {
        data->cachedCFString = CFStringCreateWithCharacters(kCFAllocatorDefault, m_pchChars, data->dataLength);
    }
    return static_cast<CFStringRef>(CFRetain(data->cachedCFString));
}

void CString::ReleaseCFStringRef(CFStringRef string) const {
    if (string != nullptr) {
        CFRelease(string);
    }
}

bool CString::SetFromCFStringRef(CFStringRef string, unsigned long /*encoding*/) {
    if (string == nullptr || CFGetTypeID(string) != CFStringGetTypeID()) {
        Empty();
        return true;
    }
    const CFIndex count = CFStringGetLength(string);
    if (count > std::numeric_limits<int>::max()) {
        throw std::bad_alloc();
    }
    // The string may be the one that this very buffer caches.
    const OwnedString kept(static_cast<CFStringRef>(CFRetain(string)));
    AllocBeforeWrite(static_cast<int>(count));
    CFStringGetCharacters(string, CFRangeMake(0, count), m_pchChars);
    int length = static_cast<int>(count);
    while (length > 0 && m_pchChars[length - 1] == 0) {
        --length;
    }
    CopyBeforeWrite();
    SetLength(Data(), length);
    if (Data()->cachedCFString == nullptr) {
        Data()->cachedCFString = static_cast<CFStringRef>(CFRetain(string));
    }
    return true;
}

// ---- Numbers ------------------------------------------------------------------------------------

int CString::GetIntValue() const {
    const OwnedString string(GetCFStringRef(kCFStringEncodingUTF16));
    return CFStringGetIntValue(string.get());
}

double CString::GetDoubleValue() const {
    const OwnedString string(GetCFStringRef(kCFStringEncodingUTF16));
    return CFStringGetDoubleValue(string.get());
}

// ---- The names of files (HFS, UTF-16) and of resources (Pascal strings) ---------------------------

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
    const bool halvesPair =
        most > 0 && IsLeadSurrogate(UnitAt(string.get(), most - 1)) && IsTrailSurrogate(UnitAt(string.get(), most));
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
    // Compatibility: the service gets one byte less than there is, so that a text of size - 1 bytes is refused
    // although it would fit. Applications expect the empty name there.
    pascal[0] = 0;
    if (CFStringGetPascalString(string.get(), pascal, size - 1, encoding) == 0) {
        std::fill_n(pascal, std::min(size, 256L), static_cast<unsigned char>(0));
    }
}

// ---- The host's script --------------------------------------------------------------------------

constinit long IntlInfo::s_systemScript = 0;
constinit bool IntlInfo::s_doubleByte = false;
constinit unsigned char IntlInfo::s_leadByteTable[256] = {};

void IntlInfo::Initialize() {
    s_systemScript = GetScriptManagerVariable(smSysScript);
    s_doubleByte = GetScriptManagerVariable(smDoubleByte) != 0;
    FillParseTable(reinterpret_cast<char*>(s_leadByteTable), static_cast<ScriptCode>(s_systemScript));
}
