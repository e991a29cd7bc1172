// Picks what counts the units before the first 0 in this build.
#pragma once

#include "Source/Base/UnitSearchPlain.h"

// A sanitizer has to see every unit that is read, and no other.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define LUM_IS_WATCHED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define LUM_IS_WATCHED
#endif
#endif

#if defined(__SSE2__) && !defined(LUM_IS_WATCHED)
#include "Source/Base/UnitLengthSse2.h"
namespace Lum {
using Sse2::CountUnits;
}
#else
namespace Lum {
using Plain::CountUnits;
}
#endif
