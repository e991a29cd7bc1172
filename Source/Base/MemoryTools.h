// Marks memory that our own pools hand out for the address sanitizer. Without the sanitizer these do nothing.
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

namespace Lum::Internal {

#ifdef LUM_ADDRESS_SANITIZER
inline constexpr bool kIsMemoryChecked = true;
/// Any access is a fault from now on.
inline void PoisonMemory(const void* start, std::size_t size) noexcept { __asan_poison_memory_region(start, size); }
inline void UnpoisonMemory(const void* start, std::size_t size) noexcept { __asan_unpoison_memory_region(start, size); }
/// Tells the leak checker that a heap block, and what it points to, is kept for the life of the process.
inline void IgnoreLeak(const void* block) noexcept { __lsan_ignore_object(block); }
#else
inline constexpr bool kIsMemoryChecked = false;
inline void PoisonMemory(const void* /*start*/, std::size_t /*size*/) noexcept {}
inline void UnpoisonMemory(const void* /*start*/, std::size_t /*size*/) noexcept {}
inline void IgnoreLeak(const void* /*block*/) noexcept {}
#endif

}  // namespace Lum::Internal
