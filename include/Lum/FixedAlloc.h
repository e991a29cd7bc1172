// CFixedAlloc: memory in blocks of one size, taken from the heap many at a time. Single blocks never go back to
// the heap.
//
// Blocks are aligned for a pointer. Not synchronised. Under the address sanitizer a block that is not
// handed out is poisoned, so that its use and a second Free are reported.
#pragma once

#include <cstddef>

#include <Lum/Export.h>

/// One piece of heap memory: the link to the next older piece, and the blocks behind it.
struct LUM_API CPlex {
    CPlex* next;  ///< The next older piece, or null.

    /// Takes `count` times `elementSize` bytes, and the link, from the heap, links the piece in
    /// front of `head` and returns it. A count of 0 counts as 1. Throws std::bad_alloc, `head` unchanged.
    static CPlex* Create(CPlex*& head, unsigned int count, unsigned int elementSize);
    /// The first byte behind the link.
    void* data() noexcept { return this + 1; }
    /// Frees this piece and every older one.
    void FreeDataChain() noexcept;
};

/// See the head of this file. The fields are for reading.
class LUM_API CFixedAlloc {
public:
    /// Blocks of `size` bytes, `count` of them a plex (0 counts as 1). They lie at a distance of that
    /// many bytes rounded up to a multiple of a pointer's size, at least one pointer.
    CFixedAlloc(unsigned int size, unsigned int count) noexcept;
    CFixedAlloc(const CFixedAlloc&) = delete;
    CFixedAlloc& operator=(const CFixedAlloc&) = delete;
    /// As FreeAll.
    ~CFixedAlloc();

    /// A block: the one freed last, or else of a fresh piece in ascending order. Behind its first pointer
    /// it holds what its last user left, in a fresh piece zeros.
    /// The caller returns it with Free, or all of them with FreeAll. Throws std::bad_alloc.
    [[nodiscard]] void* Alloc();
    /// Takes a block back; null is ignored. Constant time, as Alloc but for a fresh piece.
    void Free(void* block) noexcept;
    /// Returns all memory to the heap; no block may be used after that.
    void FreeAll() noexcept;

    unsigned int blockSize;      ///< Bytes a block has, as asked for.
    unsigned int blocksPerPlex;  ///< Blocks of a piece, at least 1.
    CPlex* plexChain = nullptr;  ///< The newest piece.
    void* freeList = nullptr;    ///< The first free block; each begins with the link to the next.
};
