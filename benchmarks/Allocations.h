// Counts what is asked of the free store, so that a case can tell allocations and what is never given
// back as well as time.
#pragma once

#include <cstdint>

namespace Bench {

/// How often this thread has called operator new. Every library of the process that allocates with
/// it is counted; what calls malloc itself is not.
[[nodiscard]] std::uint64_t AllocationCount() noexcept;

/// The bytes of the process's heap that are in use, by whatever way they were asked for.
[[nodiscard]] std::int64_t HeapBytes() noexcept;

}  // namespace Bench
