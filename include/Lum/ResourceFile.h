// What is in a resource file, for tools and for developers whose file does not open.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <Lum/Export.h>

namespace Lum::Platform {

/// One resource.
struct ResourceEntry {
    std::uint32_t type;  ///< a four-character code: 'STR ' is 0x53545220
    short id;            ///< the number, unique within the type
    std::string name;    ///< in the application's text encoding as a rule; empty if it has none
    std::string bytes;   ///< the bytes that are in the file, or would be if it were written now
};

/// Everything in a file that OpenResourceFile opened, by type and id; nothing for another reference.
[[nodiscard]] LUM_API std::vector<ResourceEntry> ListResources(short reference);

/// Why a file cannot be opened as a resource file: "the map is too short", say. Empty if it can.
[[nodiscard]] LUM_API std::string ExplainResourceFile(const std::filesystem::path& path);

}  // namespace Lum::Platform
