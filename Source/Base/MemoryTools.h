// What the address sanitizer is told about memory that we deal out ourselves. Without the sanitizer
// these do nothing.
#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define LUM_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LUM_ADDRESS_SANITIZER 1
#endif
#endif

#ifdef LUM_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#include <sanitizer/lsan_interface.h>
#endif

namespace Lum {

#ifdef LUM_ADDRESS_SANITIZER
inline constexpr bool kIsMemoryWatched = true;
/// Any access is a fault from now on.
inline void PoisonMemory(const void* start, std::size_t size) noexcept { __asan_poison_memory_region(start, size); }
inline void UnpoisonMemory(const void* start, std::size_t size) noexcept { __asan_unpoison_memory_region(start, size); }
/// A heap block that is kept for the life of the process on purpose, and what it points to.
inline void IgnoreLeak(const void* block) noexcept { __lsan_ignore_object(block); }
#else
inline constexpr bool kIsMemoryWatched = false;
inline void PoisonMemory(const void* /*start*/, std::size_t /*size*/) noexcept {}
inline void UnpoisonMemory(const void* /*start*/, std::size_t /*size*/) noexcept {}
inline void IgnoreLeak(const void* /*block*/) noexcept {}
#endif

}  // namespace Lum
