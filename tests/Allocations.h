// Counts the allocations of this process and makes chosen ones fail.
#pragma once

#include <cstddef>

namespace Allocations {

/// How many there were so far.
std::size_t Count() noexcept;
/// Lets `more` succeed and the one after them fail with std::bad_alloc, once.
void FailAfter(std::size_t more) noexcept;
/// Takes that back.
void NeverFail() noexcept;

}  // namespace Allocations
