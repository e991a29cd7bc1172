// Narrow texts of formats, in the application's encoding, as units.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Uc16 {

constexpr std::size_t kNoLimit = SIZE_MAX;

/// Converts a NUL-terminated text up to `limit` units, whole characters only, and returns how many those
/// are; `units` may be null, to count them. The text ends before what is malformed. Bytes that make up
/// `limit` units need no NUL behind them.
std::size_t NarrowToUnits(const char* text, std::size_t limit, unsigned short* units);

}  // namespace Uc16
