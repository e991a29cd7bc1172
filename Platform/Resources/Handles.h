// Relocatable memory: a handle points to the place that holds the block's address, so that the block
// can move when it is resized. NewHandle, DisposeHandle, GetHandleSize and SetHandleSize are public.
//
// The places stay where they are for the life of the process: a handle that is no longer alive, or
// never was one, is recognised, and every operation leaves it alone. For one thread at a time.
#pragma once

#include <Lum/Platform.h>

using Handle = char**;
using Size = long;

/// Until HUnlock the block does not move: SetHandleSize may make it smaller but not larger.
void HLock(Handle handle);
void HUnlock(Handle handle);

namespace Resources {

/// Who answers for a handle's block.
enum class HandleOwner : unsigned char {
    kNobody,   ///< not alive; the place may be used again
    kCaller,   ///< made by NewHandle
    kFile,     ///< a resource; the block goes when its file closes
    kRetired,  ///< of a closed file, and kept empty for those who still look at it
};

/// The owner of any pointer at all; kNobody for what is no handle.
HandleOwner OwnerOf(Handle handle) noexcept;
/// Changes who answers for a handle that is alive. kNobody and kRetired give the block back.
void SetOwner(Handle handle, HandleOwner owner) noexcept;

}  // namespace Resources
