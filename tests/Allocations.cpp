// Replaces the global allocation functions of the test program.
#include "tests/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {
constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();
std::atomic<std::size_t> s_count = 0;
std::atomic<std::size_t> s_failAt = kNever;
}  // namespace

namespace Allocations {
std::size_t Count() noexcept { return s_count; }
void FailAfter(std::size_t more) noexcept { s_failAt = s_count + more; }
void NeverFail() noexcept { s_failAt = kNever; }
}  // namespace Allocations

void* operator new(std::size_t size) {
    if (s_count++ == s_failAt) {
        throw std::bad_alloc();
    }
    if (void* const block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return s_count++ == s_failAt ? nullptr : std::malloc(size == 0 ? 1 : size);
}
// A sanitizer has array forms of its own, which would not come here.
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { std::free(block); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }
