// The host's conversions between colon-separated and POSIX paths, over its URL services.
#pragma once

#include <string>

namespace Lum::Internal::Mac {

/// The path in the other style. Both are UTF-8; `path` ends at its first NUL. "" if `path` is not valid UTF-8 or
/// not a path of its style.
std::string PosixToColonPath(const std::string& path);
std::string ColonToPosixPath(const std::string& path);

}  // namespace Lum::Internal::Mac
