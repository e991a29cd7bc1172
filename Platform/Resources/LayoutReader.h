// Takes a resource file apart. Files are hostile: whatever they say is checked against their size
// before it is used, and one that does not hold together is refused whole.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "Platform/Resources/ResourceMap.h"

namespace Resources {

/// Reads `size` bytes at `offset`, both inside the file; false if that fails.
using ReadBytes = std::function<bool(std::uint64_t offset, std::size_t size, char* bytes)>;

/// Reads a file of `size` bytes into an empty map. Returns null, or what is wrong with the file, in words for
/// a developer. Takes at most four times the file's size of memory.
const char* ReadLayout(std::uint64_t size, const ReadBytes& read, ResourceMap& map);

/// The same for a file that is in memory.
const char* ReadLayout(std::string_view file, ResourceMap& map);

}  // namespace Resources
