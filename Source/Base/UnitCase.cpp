// Picks what changes case in this build.
#include "Source/Base/UnitCase.h"

#ifdef __SSE2__
#include "Source/Base/UnitCaseSse2.h"
namespace Fastest = Lum::Sse2;
#else
#include "Source/Base/UnitCasePlain.h"
namespace Fastest = Lum::Plain;
#endif

namespace Lum {

void ToAsciiUpper(unsigned short* units, std::size_t size) noexcept { Fastest::SwapCase(units, size, 'a'); }

void ToAsciiLower(unsigned short* units, std::size_t size) noexcept { Fastest::SwapCase(units, size, 'A'); }

}  // namespace Lum
