// Buffers of the four size classes come from one pool a class.
#pragma once

#include "cstring/BlockPool.h"
#include "cstring/BufferMemory.h"

extern CFixedAlloc* _afxAlloc64;   // NOLINT: reserved, but this family's own names
extern CFixedAlloc* _afxAlloc128;  // NOLINT
extern CFixedAlloc* _afxAlloc256;  // NOLINT
extern CFixedAlloc* _afxAlloc512;  // NOLINT

namespace Lum {

inline constexpr CFixedAlloc** kPools[kSizeClasses] = {&_afxAlloc64, &_afxAlloc128, &_afxAlloc256, &_afxAlloc512};

/// Makes the pool of a class, for the life of the process.
CFixedAlloc* MakePool(int sizeClass);

/// Whether memory can be taken with none to be made first.
inline bool IsBufferMemoryReady(int sizeClass) noexcept {
    const CFixedAlloc* const pool = *kPools[sizeClass];
    return pool != nullptr && pool->freeList != nullptr;
}

inline void* TakeBufferMemory(int sizeClass) {
    CFixedAlloc* pool = *kPools[sizeClass];
    if (pool == nullptr) {
        pool = MakePool(sizeClass);
    }
    void* const memory = TakeBlock(*pool);
    const std::size_t used = BytesFor(CapacityOfClass(sizeClass));
    PoisonMemory(static_cast<std::byte*>(memory) + used, pool->blockSize - used);
    return memory;
}

inline void GiveBufferMemory(int sizeClass, void* memory) noexcept { GiveBlock(**kPools[sizeClass], memory); }

}  // namespace Lum
