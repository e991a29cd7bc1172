// CPlex and CFixedAlloc: how memory comes from the heap and goes back to it. Single blocks are handed out in
// BufferMemory.h.
#include <Lum/FixedAlloc.h>

#include <cstring>
#include <limits>
#include <new>

#include "cstring/BufferMemory.h"

using namespace Lum::Internal;

// The pools of string buffers are made on first use and never destroyed, so that strings in static objects
// outlive every order of destruction.
constinit CFixedAlloc* _afxAlloc64 = nullptr;   // NOLINT
constinit CFixedAlloc* _afxAlloc128 = nullptr;  // NOLINT
constinit CFixedAlloc* _afxAlloc256 = nullptr;  // NOLINT
constinit CFixedAlloc* _afxAlloc512 = nullptr;  // NOLINT

CPlex* CPlex::Create(CPlex*& head, unsigned int count, unsigned int elementSize) {
    const std::uint64_t size = std::uint64_t{std::max(count, 1U)} * elementSize;
    if (size > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()) - sizeof(CPlex)) {
        throw std::bad_alloc();
    }
    void* const memory = ::operator new[](static_cast<std::size_t>(size) + sizeof(CPlex));
    head = new (memory) CPlex{head};
    return head;
}

void CPlex::FreeDataChain() noexcept {
    for (CPlex* plex = this; plex != nullptr;) {
        CPlex* const older = plex->next;
        ::operator delete[](plex);
        plex = older;
    }
}

CFixedAlloc::CFixedAlloc(unsigned int size, unsigned int count) noexcept : blockSize(size), blocksPerPlex(count) {}

CFixedAlloc::~CFixedAlloc() { FreeAll(); }

void* CFixedAlloc::Alloc() { return TakeBlock(*this); }

void CFixedAlloc::Free(void* block) noexcept {
    if (block != nullptr) {
        FreeBlock(*this, block);
    }
}

void CFixedAlloc::FreeAll() noexcept {
    if (plexChain != nullptr) {
        plexChain->FreeDataChain();
    }
    plexChain = nullptr;
    freeList = nullptr;
}

namespace Lum::Internal {

CFixedAlloc* Pools::MakePool(int sizeClass) {
    constexpr unsigned int blocksPerPlex = 64;
    const auto blockSize = BlockDistance(BytesFor(CapacityOfClass(sizeClass)));
    return *kPools[sizeClass] = new CFixedAlloc(static_cast<unsigned int>(blockSize), blocksPerPlex);
}

void AddPlex(CFixedAlloc& pool) {
    const std::uint64_t distance = BlockDistance(pool.blockSize);
    if (distance > std::numeric_limits<unsigned int>::max()) {
        throw std::bad_alloc();
    }
    const std::size_t count = std::max(pool.blocksPerPlex, 1U);
    CPlex* const plex =
        CPlex::Create(pool.plexChain, static_cast<unsigned int>(count), static_cast<unsigned int>(distance));
    auto* const blocks = static_cast<std::byte*>(plex->data());
    for (std::size_t i = count; i-- > 0;) {
        std::byte* const block = blocks + i * static_cast<std::size_t>(distance);
        // Buffers of strings are read behind their text.
        std::memset(block, 0, static_cast<std::size_t>(distance));
        FreeBlock(pool, block);
    }
}

}  // namespace Lum::Internal
