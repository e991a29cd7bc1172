// Strings in handles and in named resources: all of a handle's bytes as 16-bit units in the host's order,
// or up to the first NUL as text in the application's encoding.
#include <Lum/CString.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "Platform/CoreFoundation/CFString.h"
#include "Platform/Resources/Resources.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "Platform/Uc16/Uc16.h"
#include "cstring/Buffer.h"
#include "cstring/OwnedString.h"

namespace {

constexpr long kNameSize = 256;

/// Makes a handle, or resizes the one that is there, and fills it. Whether there was one.
bool Store(Handle& handle, const void* bytes, std::size_t size) {
    const bool isThere = handle != nullptr;
    const auto wanted = static_cast<Size>(size);
    if (isThere) {
        SetHandleSize(handle, wanted);
    } else {
        handle = NewHandle(wanted);
    }
    if (handle == nullptr || GetHandleSize(handle) != wanted) {
        throw std::bad_alloc();
    }
    if (size != 0) {
        HLock(handle);
        std::memcpy(*handle, bytes, size);
        HUnlock(handle);
    }
    return isThere;
}

}  // namespace

bool CString::LoadString(char** handle) {
    if (handle == nullptr) {
        return false;
    }
    HLock(handle);
    const auto size = static_cast<std::size_t>(GetHandleSize(handle));
    const std::string text(size == 0 ? "" : *handle, size == 0 ? 0 : strnlen(*handle, size));
    HUnlock(handle);
    const TextEncoding encoding = GetApplicationTextEncoding();
    const Lum::OwnedString string(CFStringCreateWithCString(kCFAllocatorDefault, text.c_str(), encoding));
    return SetFromCFStringRef(string.get(), encoding);
}

bool CString::LoadUnicodeString(char** handle) {
    if (handle == nullptr) {
        return false;
    }
    const auto size = static_cast<std::size_t>(GetHandleSize(handle));
    const int length = Lum::AsLength(size / 2);
    unsigned short* const units = GetBufferSetLength(length);
    if (length != 0) {
        std::memcpy(units, *handle, size / 2 * 2);
    }
    ReleaseBuffer(length);
    return true;
}

bool CString::LoadString(unsigned long type, const unsigned char* name, bool unicode) {
    char** const handle = Get1NamedResource(static_cast<ResType>(type), name);
    return unicode ? LoadUnicodeString(handle) : LoadString(handle);
}

bool CString::LoadString(unsigned long type, const CString& name, bool unicode) {
    unsigned char pascal[kNameSize];
    name.ToMac(pascal, kNameSize);
    return LoadString(type, pascal, unicode);
}

bool CString::UnloadUnicodeString(char*** handle) const {
    return handle != nullptr && Store(*handle, m_pchChars, 2 * static_cast<std::size_t>(GetLength()));
}

bool CString::UnloadString(char*** handle) const {
    if (handle == nullptr) {
        return false;
    }
    const std::size_t most = 2 * static_cast<std::size_t>(GetLength());
    const auto bytes = std::make_unique_for_overwrite<char[]>(most + 1);
    return Store(*handle, bytes.get(), uc16_wcstombs(bytes.get(), m_pchChars, most));
}

bool CString::UnloadString(unsigned long type, const unsigned char* name, bool unicode) const {
    const auto code = static_cast<ResType>(type);
    Handle handle = Get1NamedResource(code, name);
    if (unicode ? UnloadUnicodeString(&handle) : UnloadString(&handle)) {
        ChangedResource(handle);
        return true;
    }
    AddResource(handle, code, UniqueID(code), name);
    if (ResError() != noErr) {
        DisposeHandle(handle);  // nobody took it
    }
    return false;
}

bool CString::UnloadString(unsigned long type, const CString& name, bool unicode) const {
    unsigned char pascal[kNameSize];
    name.ToMac(pascal, kNameSize);
    return UnloadString(type, pascal, unicode);
}
