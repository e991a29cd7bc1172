// Chooses the fastest decoder of escapes for this processor.
#pragma once

#include "Source/Base/Cpu.h"
#include "Source/URI/UnescapingPlain.h"

#ifdef __SSE2__
#include "Source/URI/UnescapingSsse3.h"
namespace Lum::Internal {
inline UnescapeFunction FastestUnescape() noexcept {
    return UsedCpu() >= CpuTier::kSsse3 ? Ssse3::Unescape : Plain::Unescape<false>;
}
}  // namespace Lum::Internal
#else
namespace Lum::Internal {
inline UnescapeFunction FastestUnescape() noexcept { return Plain::Unescape<false>; }
}  // namespace Lum::Internal
#endif
