// Text to and from the host's strings, and what rests on them: narrow text in the application's
// encoding, and numbers.
#include <Lum/CString.h>

#include <cstdint>
#include <cstring>

#include "Platform/CoreFoundation/CFString.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "cstring/Buffer.h"
#include "cstring/HostString.h"
#include "cstring/OwnedString.h"

using Lum::OwnedString;

namespace {

OwnedString FromApplicationText(const char* text) {
    return OwnedString(CFStringCreateWithCString(kCFAllocatorDefault, text, GetApplicationTextEncoding()));
}

}  // namespace

void Lum::ReleaseHostString(CFStringRef string) noexcept { CFRelease(string); }

// ---- Narrow text --------------------------------------------------------------------------------

namespace {

bool IsResourceNumber(const char* text) noexcept { return reinterpret_cast<std::uintptr_t>(text) < 0x10000; }

int LengthOfBytes(const char* text) { return IsResourceNumber(text) ? 0 : Lum::AsLength(std::strlen(text)); }

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
    // Stays as it is where the text has no meaning in the encoding.
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
        Lum::SetLength(Data(), 0);
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
    // The string may be the one that this very buffer keeps.
    const OwnedString kept(static_cast<CFStringRef>(CFRetain(string)));
    AllocBeforeWrite(static_cast<int>(count));
    CFStringGetCharacters(string, CFRangeMake(0, count), m_pchChars);
    int length = static_cast<int>(count);
    while (length > 0 && m_pchChars[length - 1] == 0) {
        --length;
    }
    CopyBeforeWrite();
    Lum::SetLength(Data(), length);
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
