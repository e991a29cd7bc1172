// The moves of a fixed-block allocator, open to be inlined where every string is made and freed.
#pragma once

#include <Lum/FixedAlloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "Source/Base/MemoryTools.h"

namespace Lum {

/// From one block to the next, in bytes; wider than any 32-bit size.
inline std::uint64_t BlockDistance(std::uint64_t blockSize) noexcept {
    constexpr std::uint64_t pointer = sizeof(void*);
    return std::max(pointer, (blockSize + pointer - 1) / pointer * pointer);
}

/// Puts the blocks of a fresh plex on the pool's empty free list, the first at its head.
void AddPlex(CFixedAlloc& pool);

inline void* TakeBlock(CFixedAlloc& pool) {
    if (pool.freeList == nullptr) {
        AddPlex(pool);
    }
    void* const block = pool.freeList;
    UnpoisonMemory(block, std::max<std::size_t>(pool.blockSize, sizeof(void*)));
    pool.freeList = *static_cast<void**>(block);
    return block;
}

inline void GiveBlock(CFixedAlloc& pool, void* block) noexcept {
    // Written before it is poisoned, so that a block given twice is reported here.
    *static_cast<void**>(block) = pool.freeList;
    pool.freeList = block;
    PoisonMemory(block, static_cast<std::size_t>(BlockDistance(pool.blockSize)));
}

}  // namespace Lum
