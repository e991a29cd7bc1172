// The host's conversions between colon-separated and POSIX paths, over its URL services.
#pragma once

#include <string>

namespace Mac {

/// The path in the other style, UTF-8 to UTF-8. Read to the first NUL; "" where the host has no
/// answer: no UTF-8, or no path of its style.
std::string PosixToColonPath(const std::string& path);
std::string ColonToPosixPath(const std::string& path);

}  // namespace Mac
