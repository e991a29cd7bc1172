// Replaces the global allocation functions of the test program.
#include "tests/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> s_count = 0;
}  // namespace

namespace Allocations {
std::size_t Count() noexcept { return s_count; }
}  // namespace Allocations

void* operator new(std::size_t size) {
    ++s_count;
    if (void* const block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    ++s_count;
    return std::malloc(size == 0 ? 1 : size);
}
// A sanitizer has array forms of its own, which would not come here.
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { std::free(block); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }
