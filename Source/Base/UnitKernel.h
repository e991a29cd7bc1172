// Picks what searches 16-bit units on this processor.
#pragma once

#include "Source/Base/UnitSearchPlain.h"

namespace Lum {

/// The searches that exist in more than one variant.
struct UnitKernel {
    decltype(&Plain::FindUnit) findUnit;
    decltype(&Plain::FindLastUnit) findLastUnit;
    decltype(&Plain::FindMarks) findMarks;
    decltype(&Plain::CountMatches) countMatches;
};

inline constexpr UnitKernel kPlainUnits{Plain::FindUnit, Plain::FindLastUnit, Plain::FindMarks, Plain::CountMatches};

}  // namespace Lum

#ifdef __SSE2__
#include "Source/Base/UnitSearchAvx2.h"
#include "Source/Base/UnitSearchSse2.h"
namespace Lum {
inline constexpr UnitKernel kSse2Units{Sse2::FindUnit, Sse2::FindLastUnit, Sse2::FindMarks, Sse2::CountMatches};
inline constexpr UnitKernel kAvx2Units{Avx2::FindUnit, Sse2::FindLastUnit, Avx2::FindMarks, Sse2::CountMatches};

inline const UnitKernel& FastestUnitKernel() noexcept {
    // Local, for the sake of static initialisers that search before those of this library ran.
    static const UnitKernel& fastest = Avx2::IsSupported() ? kAvx2Units : kSse2Units;
    return fastest;
}
}  // namespace Lum
#else
namespace Lum {
inline const UnitKernel& FastestUnitKernel() noexcept { return kPlainUnits; }
}  // namespace Lum
#endif
