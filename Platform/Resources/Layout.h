// The layout of resource files, which ResourceMap.h describes: how a file is read into a map and written from
// one, and its numbers, which are all big-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Resources/ResourceMap.h"

namespace Lum::Internal::Resources {

/// Reads `size` bytes at `offset`, both inside the file; false if that fails.
using ReadBytes = std::function<bool(std::uint64_t offset, std::size_t size, char* bytes)>;

/// Reads a file of `size` bytes into an empty map. Returns null, or what is wrong with the file, in words for
/// a developer. The bytes may be anything: every offset and length is checked before it is used, and a file
/// with any fault is refused. Takes at most four times the file's size of memory.
const char* ReadLayout(std::uint64_t size, const ReadBytes& read, ResourceMap& map);
/// The same for a file that is in memory.
const char* ReadLayout(std::string_view file, ResourceMap& map);

/// The bytes of a file with the contents of the map, changed resources as they are in memory. Nothing if they
/// exceed the layout: 16 MB of data with their lengths, a name list that begins within 15 bits (2,727
/// resources of one type), 64 KB of names.
std::optional<std::string> WriteLayout(const ResourceMap& map);
/// Whether the layout can hold one more resource, with `nameSize` bytes of name and `dataSize` of data.
bool CanAdd(const ResourceMap& map, ResType type, std::size_t nameSize, std::size_t dataSize);

/// The number of `size` bytes at `offset`, which must all be inside.
inline std::uint32_t ReadNumber(std::string_view bytes, std::size_t offset, std::size_t size) noexcept {
    std::uint32_t number = 0;
    for (const char byte : std::string_view(bytes.data() + offset, size)) {
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}
inline std::uint32_t Read16(std::string_view bytes, std::size_t offset) noexcept {
    return ReadNumber(bytes, offset, 2);
}
inline std::uint32_t Read24(std::string_view bytes, std::size_t offset) noexcept {
    return ReadNumber(bytes, offset, 3);
}
inline std::uint32_t Read32(std::string_view bytes, std::size_t offset) noexcept {
    return ReadNumber(bytes, offset, 4);
}

/// Appends the low `size` bytes of a number.
inline void AppendNumber(std::string& bytes, std::uint64_t number, std::size_t size) {
    while (size-- > 0) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(number >> (8 * size))));
    }
}
inline void Append16(std::string& bytes, std::uint64_t number) { AppendNumber(bytes, number, 2); }
inline void Append24(std::string& bytes, std::uint64_t number) { AppendNumber(bytes, number, 3); }
inline void Append32(std::string& bytes, std::uint64_t number) { AppendNumber(bytes, number, 4); }

/// Whether [offset, offset + size) lies inside `whole` bytes.
constexpr bool IsInside(std::uint64_t offset, std::uint64_t size, std::uint64_t whole) noexcept {
    return offset <= whole && size <= whole - offset;
}

}  // namespace Lum::Internal::Resources
