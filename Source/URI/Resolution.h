// The path arithmetic of RFC 2396, section 5.2, steps 6a to 6g.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Lum {

/// The path that a relative reference's path leads to from a base path: the base without its last
/// segment, the reference behind it, dot segments removed. A path that ends in "." or ".." ends with
/// "/" afterwards. What ".." has nothing left to cancel is kept if `keepsLeadingDots`, otherwise
/// dropped. Both paths unescaped; the reference's does not begin with "/".
std::string ResolvePath(std::string_view base, std::string_view reference, bool keepsLeadingDots);

/// The same as a cut and an addition: the base's first `kept` bytes, and `added` behind them.
struct PathEdit {
    std::size_t kept;
    std::string_view added;
};

/// What ResolvePath would do, where it comes to no more than that: dots only at the reference's head,
/// and nothing above the start of the base asked for.
std::optional<PathEdit> FindPathEdit(std::string_view base, std::string_view reference) noexcept;

}  // namespace Lum
