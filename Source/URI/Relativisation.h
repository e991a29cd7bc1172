// The relative path from one path to another.
#pragma once

#include <string>
#include <string_view>

namespace Lum {

/// What leads from a directory to `target`: a ".." for each segment of the directory that the two do
/// not share, and the target's segments that they do not share; "./" where that is nothing. Linear.
std::string RelativePath(std::string_view target, std::string_view baseDirectory, bool caseSensitive);

}  // namespace Lum
