// The heap of lum-counts. What glibc's needs for a block depends on what earlier cases, and files whose order
// the kernel chooses, left there; a count would follow. This one keeps free blocks by their size, a power of
// two: a block has the same price whatever was there before. For one thread.
#include "Allocations.h"

#include <sys/mman.h>
#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

/// In front of each block. While the block is free, `next` follows in it.
struct alignas(std::max_align_t) Header {
    std::size_t sizeClass;  ///< The block with its header has 2 to the power of this many bytes; 0: never freed.
};
struct Free {
    Free* next;
};

constexpr std::size_t kLeastClass = std::bit_width(sizeof(Header) + sizeof(Free) - 1);
constexpr std::size_t kChunk = std::size_t{64} << 20;
std::array<Free*, 64> freeBlocks{};
std::byte* unused = nullptr;
std::size_t unusedSize = 0;

/// Takes a multiple of the header's alignment.
void* Fresh(std::size_t size) noexcept {
    if (size > unusedSize) {
        const std::size_t chunk = std::max(size, kChunk);
        void* const start = mmap(nullptr, chunk, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (start == MAP_FAILED) {
            errno = ENOMEM;
            return nullptr;
        }
        unused = static_cast<std::byte*>(start);
        unusedSize = chunk;
    }
    void* const result = unused;
    unused += size;
    unusedSize -= size;
    return result;
}

Header* HeaderOf(void* block) noexcept { return static_cast<Header*>(block) - 1; }

}  // namespace

namespace Bench {

std::uint64_t AllocationCount() noexcept { return 0; }
std::int64_t HeapBytes() noexcept { return 0; }

}  // namespace Bench

extern "C" {

void* malloc(std::size_t size) {
    if (size > PTRDIFF_MAX / 2) {
        errno = ENOMEM;
        return nullptr;
    }
    const auto sizeClass = std::max<std::size_t>(std::bit_width(size + sizeof(Header) - 1), kLeastClass);
    if (Free* const first = freeBlocks[sizeClass]; first != nullptr) {
        freeBlocks[sizeClass] = first->next;
        return first;
    }
    auto* const header = static_cast<Header*>(Fresh(std::size_t{1} << sizeClass));
    if (header == nullptr) {
        return nullptr;
    }
    header->sizeClass = sizeClass;
    return header + 1;
}

void free(void* block) {
    if (block != nullptr && HeaderOf(block)->sizeClass != 0) {
        Free*& first = freeBlocks[HeaderOf(block)->sizeClass];
        auto* const freed = static_cast<Free*>(block);
        freed->next = first;
        first = freed;
    }
}

void* calloc(std::size_t count, std::size_t size) {
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(count, size, &bytes)) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const result = malloc(bytes);
    return result == nullptr ? nullptr : std::memset(result, 0, bytes);
}

/// Blocks with an alignment of their own are kept for good and never grow.
std::size_t malloc_usable_size(void* block) {
    return block == nullptr ? 0 : (std::size_t{1} << HeaderOf(block)->sizeClass) - sizeof(Header);
}

void* realloc(void* block, std::size_t size) {
    if (block == nullptr) {
        return malloc(size);
    }
    const std::size_t held = malloc_usable_size(block);
    if (size <= held) {
        return block;
    }
    void* const result = malloc(size);
    if (result != nullptr) {
        std::memcpy(result, block, held);
        free(block);
    }
    return result;
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    if (alignment <= alignof(Header)) {
        return malloc(size);
    }
    auto* const start = static_cast<std::byte*>(Fresh((size / alignment + 3) * alignment));
    if (start == nullptr) {
        return nullptr;
    }
    const std::size_t past = reinterpret_cast<std::uintptr_t>(start) % alignment;
    std::byte* const block = start + 2 * alignment - past;
    HeaderOf(block)->sizeClass = 0;
    return block;
}

void* memalign(std::size_t alignment, std::size_t size) { return aligned_alloc(alignment, size); }

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    *block = aligned_alloc(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}

}  // extern "C"
