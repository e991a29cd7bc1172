// Puts a resource file together.
#pragma once

#include <optional>
#include <string>

#include "Platform/Resources/ResourceMap.h"

namespace Resources {

/// The bytes of a file that holds what the map holds, changed resources as they are in memory; nothing
/// if that is more than the layout has room for: 16 MB of data with their lengths, a name list that
/// begins within 15 bits (2,727 resources of one type), 64 KB of names.
std::optional<std::string> WriteLayout(const ResourceMap& map);

/// Whether one more resource with `nameSize` bytes of name and `dataSize` of data has room.
bool HasRoomFor(const ResourceMap& map, ResType type, std::size_t nameSize, std::size_t dataSize);

}  // namespace Resources
