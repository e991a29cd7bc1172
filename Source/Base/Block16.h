// Picks the Block16 that this build searches with.
#pragma once

#ifdef __SSE2__
#include "Source/Base/Block16Sse2.h"
namespace Lum {
using Block16 = Sse2::Block16;
}
#else
#include "Source/Base/Block16Plain.h"
namespace Lum {
using Block16 = Plain::Block16;
}
#endif
