// How the time of an operation grows with its input: a figure for an element at each of a few sizes.
//
// Where the figures of a row stay alike, the operation is linear.
#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "Results.h"

namespace Bench {

/// Prints a row an operation and a column a size. Says nothing where `growth` is empty.
void PrintGrowth(std::ostream& out, const std::vector<CaseResult>& growth);

/// The same figures, unrounded.
[[nodiscard]] nlohmann::json GrowthToJson(const std::vector<CaseResult>& growth);

}  // namespace Bench
