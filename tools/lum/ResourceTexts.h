// The texts in resources, as the types of string resources keep them.
#pragma once

#include <cstdint>
#include <string>

#include <Lum/CString.h>
#include <Lum/ResourceFile.h>
#include <nlohmann/json.hpp>

namespace Tool {

constexpr std::uint32_t kSingleString = 0x53545220;  // 'STR ': a Pascal string
constexpr std::uint32_t kStringList = 0x53545223;    // 'STR#': a count, and Pascal strings
constexpr std::uint32_t kIndex = 0x5354526D;         // 'STRm': string numbers and positions in the lists
constexpr std::uint32_t kText = 0x54455854;          // 'TEXT': bytes
constexpr std::uint32_t kUnicodeText = 0x75747874;   // 'utxt': units in this machine's order

/// A line with type, number and name, and a line for each text in it; for other types, how large it is.
std::string AsRows(const Lum::Platform::ResourceEntry& resource);
nlohmann::ordered_json AsJson(const Lum::Platform::ResourceEntry& resource);

/// A text as a Pascal string in the application's encoding, and a 0 where that is an odd number of bytes,
/// in units. Throws std::runtime_error if it is too long or not in the encoding.
CString PascalAsUnits(const CString& text);

}  // namespace Tool
