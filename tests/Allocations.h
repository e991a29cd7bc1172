// Counts the allocations of this process.
#pragma once

#include <cstddef>

namespace Allocations {

/// How many there were so far.
std::size_t Count() noexcept;

}  // namespace Allocations
