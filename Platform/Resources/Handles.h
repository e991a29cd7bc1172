// Relocatable memory: a handle points to a slot that holds the address of a block, so that the block can move
// when it is resized. NewHandle, DisposeHandle, GetHandleSize and SetHandleSize are public.
//
// Slots stay where they are for the life of the process. So a pointer that is no handle, or no longer one, is
// recognised, and every operation ignores it. For one thread at a time.
#pragma once

#include <Lum/Platform.h>

using Handle = char**;
using Size = long;

/// Until HUnlock the block does not move: SetHandleSize can make it smaller but not larger.
void HLock(Handle handle);
void HUnlock(Handle handle);

namespace Lum::Internal::Resources {

/// Who owns the block of a handle.
enum class HandleOwner : unsigned char {
    kNobody,   ///< not in use; the slot may be used for another handle
    kCaller,   ///< made by NewHandle
    kFile,     ///< a resource; the block is freed when its file is closed
    kRetired,  ///< was a resource of a closed file; stays empty for callers that still have it
};

/// The owner. `handle` may be any pointer; kNobody for one that is no handle.
HandleOwner OwnerOf(Handle handle) noexcept;
/// Changes the owner of a handle that is in use. kNobody and kRetired free the block.
void SetOwner(Handle handle, HandleOwner owner) noexcept;

}  // namespace Lum::Internal::Resources
