// Replaces operator new and delete for the whole process by counting ones. The array and nothrow forms
// of the standard library end in these; the over-aligned forms are left alone, for no subject that is
// counted uses them.
#include "Allocations.h"

#include <malloc.h>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t allocationCount = 0;

}  // namespace

namespace Bench {

std::uint64_t AllocationCount() noexcept { return allocationCount; }

std::int64_t HeapBytes() noexcept {
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
}

}  // namespace Bench

void* operator new(std::size_t size) {
    ++allocationCount;
    // malloc(0) may give null, operator new may not.
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void operator delete(void* block) noexcept { std::free(block); }

void operator delete(void* block, std::size_t) noexcept { std::free(block); }
