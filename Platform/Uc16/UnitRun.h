// Picks what counts units up to an end in this build.
#pragma once

#include "Platform/Uc16/UnitRunPlain.h"

// A sanitizer has to see every unit that is read, and no other.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define LUM_IS_WATCHED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define LUM_IS_WATCHED
#endif
#endif

#if defined(__SSE2__) && !defined(LUM_IS_WATCHED)
#include "Platform/Uc16/UnitRunSse2.h"
namespace Uc16 {
using Sse2::CountBefore;
}
#else
namespace Uc16 {
using Plain::CountBefore;
}
#endif
