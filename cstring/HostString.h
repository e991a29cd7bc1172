// What the buffers need of the host's strings: to give one back.
#pragma once

#include <Lum/CString.h>

namespace Lum {

void ReleaseHostString(CFStringRef string) noexcept;

}  // namespace Lum
