// Where the memory of a string's buffer comes from: its size class, and a pool a class or the heap.
//
// All of it is inline, because every string is made and freed here. What is rare, a new pool or a new plex
// of blocks, is in FixedAlloc.cpp.
#pragma once

#include <Lum/CString.h>
#include <Lum/FixedAlloc.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

#include "Source/Base/MemoryTools.h"

extern CFixedAlloc* _afxAlloc64;   // NOLINT: reserved, but this family's own names
extern CFixedAlloc* _afxAlloc128;  // NOLINT
extern CFixedAlloc* _afxAlloc256;  // NOLINT
extern CFixedAlloc* _afxAlloc512;  // NOLINT

namespace Lum::Internal {

// ---- Size classes -------------------------------------------------------------------------------

/// 0 to 3 for a capacity of 64, 128, 256 and 512 units; a longer buffer has exactly the capacity asked for.
/// `length` is positive.
inline int SizeClassOf(int length) noexcept {
    return static_cast<int>(std::bit_width(static_cast<unsigned int>(length - 1) >> 6));
}
inline constexpr int kSizeClasses = 4;
constexpr int CapacityOfClass(int sizeClass) noexcept { return 64 << sizeClass; }

/// Header, units and the 0 behind them.
constexpr std::size_t BytesFor(int capacity) noexcept {
    return sizeof(CStringData) + (static_cast<std::size_t>(capacity) + 1) * sizeof(unsigned short);
}

// ---- Blocks of a CFixedAlloc --------------------------------------------------------------------

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

inline void FreeBlock(CFixedAlloc& pool, void* block) noexcept {
    // Written before it is poisoned, so that a block freed twice is reported here.
    *static_cast<void**>(block) = pool.freeList;
    pool.freeList = block;
    PoisonMemory(block, static_cast<std::size_t>(BlockDistance(pool.blockSize)));
}

// ---- Memory of a size class: one pool a class ---------------------------------------------------

namespace Pools {

inline constexpr CFixedAlloc** kPools[kSizeClasses] = {&_afxAlloc64, &_afxAlloc128, &_afxAlloc256, &_afxAlloc512};

/// Makes the pool of a class, for the life of the process.
CFixedAlloc* MakePool(int sizeClass);

/// Whether TakeBufferMemory will do without the heap.
inline bool IsBufferMemoryReady(int sizeClass) noexcept {
    const CFixedAlloc* const pool = *kPools[sizeClass];
    return pool != nullptr && pool->freeList != nullptr;
}

/// Behind its first pointer, the memory of a new block is zeros.
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

inline void FreeBufferMemory(int sizeClass, void* memory) noexcept { FreeBlock(**kPools[sizeClass], memory); }

}  // namespace Pools

// ---- Memory of a size class: a heap block each, so that memory tools see what pools hide ---------

namespace Heap {

inline bool IsBufferMemoryReady(int /*sizeClass*/) noexcept { return false; }

inline void* TakeBufferMemory(int sizeClass) {
    const std::size_t size = BytesFor(CapacityOfClass(sizeClass));
    return std::memset(::operator new[](size), 0, size);
}

inline void FreeBufferMemory(int /*sizeClass*/, void* memory) noexcept { ::operator delete[](memory); }

}  // namespace Heap

#ifdef LUM_NO_POOLS
using namespace Heap;
#else
using namespace Pools;
#endif

}  // namespace Lum::Internal
