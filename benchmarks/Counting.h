// Counting instructions in the place of time: lum-counts is built of the same cases as lum-bench and runs
// under callgrind, which collects only between two calls of ToggleCount().
#pragma once

#ifdef LUM_BENCH_COUNTS
#include <valgrind/callgrind.h>
#endif

namespace Bench {

#ifdef LUM_BENCH_COUNTS
inline constexpr bool kCounts = true;
inline void ToggleCount() { CALLGRIND_TOGGLE_COLLECT; }
#else
inline constexpr bool kCounts = false;
inline void ToggleCount() {}
#endif

}  // namespace Bench
