// A reference to one of the host's strings, given back at the end.
#pragma once

#include <memory>
#include <type_traits>

#include <Lum/HostStrings.h>
#include <Lum/Platform.h>

namespace Lum {

struct ReleaseString {
    void operator()(CFStringRef string) const noexcept { CFRelease(string); }
};
using OwnedString = std::unique_ptr<std::remove_pointer_t<CFStringRef>, ReleaseString>;

}  // namespace Lum
