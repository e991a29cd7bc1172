// Picks what decodes escapes in place on this processor.
#pragma once

#include "Source/URI/UnescapingPlain.h"

#ifdef __SSE2__
#include "Source/URI/UnescapingSsse3.h"
namespace Lum {
inline UnescapeFunction FastestUnescape() noexcept {
    // Local, for the sake of static initialisers that unescape before those of this library ran.
    static const UnescapeFunction fastest = Ssse3::IsSupported() ? Ssse3::Unescape : Plain::Unescape<false>;
    return fastest;
}
}  // namespace Lum
#else
namespace Lum {
inline UnescapeFunction FastestUnescape() noexcept { return Plain::Unescape<false>; }
}  // namespace Lum
#endif
