// Strings in handles and in named resources: all of a handle's bytes as 16-bit units in the host's order,
// or up to the first NUL as text in the application's encoding.
#include <Lum/CString.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "Platform/CoreFoundation/CoreFoundation.h"
#include "Platform/Resources/Resources.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"
#include "Platform/Uc16/Uc16.h"
#include "cstring/Buffer.h"
#include "cstring/HostOwners.h"

using namespace Lum::Internal;

namespace {

using PascalName = unsigned char[256];

/// Makes a Pascal string of a whole name; false if it does not fit the 254 bytes that ToMac writes.
bool MakeName(const CString& name, PascalName& pascal) {
    name.ToMac(pascal, sizeof pascal);
    return name.IsEmpty() || (pascal[0] != 0 && name.GetLength() < 255);
}

/// Makes a handle, or resizes the one that there is, and fills it. Returns whether there was one.
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
        std::memcpy(*handle, bytes, size);
    }
    return isThere;
}

}  // namespace

bool CString::LoadString(char** handle) {
    if (handle == nullptr) {
        return false;
    }
    const HandleLock lock(handle);
    const auto size = static_cast<std::size_t>(GetHandleSize(handle));
    const std::string text(size == 0 ? "" : *handle, size == 0 ? 0 : strnlen(*handle, size));
    const TextEncoding encoding = GetApplicationTextEncoding();
    const OwnedString string(CFStringCreateWithCString(kCFAllocatorDefault, text.c_str(), encoding));
    return SetFromCFStringRef(string.get(), encoding);
}

bool CString::LoadUnicodeString(char** handle) {
    if (handle == nullptr) {
        return false;
    }
    const auto size = static_cast<std::size_t>(GetHandleSize(handle));
    const int length = AsLength(size / 2);
    unsigned short* const units = GetBufferSetLength(length);
    if (length != 0) {
        std::memcpy(units, *handle, size / 2 * 2);
    }
    ReleaseBuffer(length);
    return true;
}

bool CString::LoadString(unsigned long type, const unsigned char* name, bool unicode) {
    char** const handle = Get1NamedResource(static_cast<ResType>(type), name);
    ThrowIfMemoryRanOut();
    return unicode ? LoadUnicodeString(handle) : LoadString(handle);
}

bool CString::LoadString(unsigned long type, const CString& name, bool unicode) {
    PascalName pascal;
    return MakeName(name, pascal) && LoadString(type, pascal, unicode);
}

bool CString::UnloadUnicodeString(char*** handle) const {
    return handle != nullptr && Store(*handle, m_pchChars, 2 * static_cast<std::size_t>(GetLength()));
}

bool CString::UnloadString(char*** handle) const {
    if (handle == nullptr) {
        return false;
    }
    const std::size_t most = 2 * static_cast<std::size_t>(GetLength());
    const std::unique_ptr<char[]> bytes(new char[most + 1]);
    return Store(*handle, bytes.get(), uc16_wcstombs(bytes.get(), m_pchChars, most));
}

bool CString::UnloadString(unsigned long type, const unsigned char* name, bool unicode) const {
    const auto code = static_cast<ResType>(type);
    Handle handle = Get1NamedResource(code, name);
    ThrowIfMemoryRanOut();
    if (unicode ? UnloadUnicodeString(&handle) : UnloadString(&handle)) {
        ChangedResource(handle);
        return true;
    }
    AddResource(handle, code, UniqueID(code), name);
    if (ResError() != noErr) {
        DisposeHandle(handle);  // no file owns it
        ThrowIfMemoryRanOut();
    }
    return false;
}

bool CString::UnloadString(unsigned long type, const CString& name, bool unicode) const {
    PascalName pascal;
    return MakeName(name, pascal) && UnloadString(type, pascal, unicode);
}
