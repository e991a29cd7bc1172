// Searches runs of 16-bit units. Each search returns a pointer to what was found, or null.
//
// Nothing outside the runs is read. A 0 is a unit like any other. Lengths of 0-terminated texts are
// UnitText.h's.
#pragma once

#include <cstddef>

#include "Source/Base/UnitText.h"

namespace Lum::Internal {

/// The first `unit` in [first, last), or null.
const unsigned short* FindUnit(const unsigned short* first, const unsigned short* last, unsigned short unit) noexcept;

/// The last `unit` in [first, last), or null.
const unsigned short* FindLastUnit(const unsigned short* first, const unsigned short* last,
                                   unsigned short unit) noexcept;

/// How often `unit` stands in [first, last).
std::size_t CountMatches(const unsigned short* first, const unsigned short* last, unsigned short unit) noexcept;

/// Where the `size` units at `needle` first stand in [first, last) as a whole, or null; `first` where
/// `size` is 0. The time grows with the sum of both lengths, whatever they hold, and no memory is taken.
const unsigned short* FindUnits(const unsigned short* first, const unsigned short* last, const unsigned short* needle,
                                std::size_t size) noexcept;

}  // namespace Lum::Internal
