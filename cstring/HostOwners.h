// Owners of what the host's services hand out: a reference to a string, and a lock on a handle's block. And
// the check for memory behind a call of the resource services.
#pragma once

#include <memory>
#include <new>
#include <type_traits>

#include <Lum/HostStrings.h>
#include <Lum/Platform.h>

#include "Platform/Resources/Resources.h"

namespace Lum::Internal {

struct ReleaseString {
    void operator()(CFStringRef string) const noexcept { CFRelease(string); }
};
/// One reference to a string of the host.
using OwnedString = std::unique_ptr<std::remove_pointer_t<CFStringRef>, ReleaseString>;

/// Keeps a handle's block from moving.
class HandleLock {
public:
    explicit HandleLock(Handle handle) : m_Handle(handle) { HLock(handle); }
    HandleLock(const HandleLock&) = delete;
    HandleLock& operator=(const HandleLock&) = delete;
    ~HandleLock() { HUnlock(m_Handle); }

private:
    Handle m_Handle;
};

/// To be called after each call of the resource services that may load or add: it tells a resource for which
/// there was no memory from one that does not exist.
inline void ThrowIfMemoryRanOut() {
    if (ResError() == memFullErr) {
        throw std::bad_alloc();
    }
}

}  // namespace Lum::Internal
