// The contents of one resource file in memory, and how they are found.
//
// The layout of the file, with big-endian numbers: a header of 16 bytes (offsets and lengths of data and
// map); bytes that are reserved for the system and the application, up to byte 256; the data, each resource
// after its 32-bit length; and the map. The map has a copy of the header, 6 bytes for the system, attributes,
// and the offsets of the type list and the name list; then types (code, count minus one, offset of its
// references), references (id, offset of the name, attributes, 24-bit offset of the data, 4 bytes for the
// system), and names (length byte and text).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Resources/Handles.h"

using ResType = std::uint32_t;
using ResID = short;

namespace Lum::Internal::Resources {

constexpr std::size_t kHeaderSize = 16;
constexpr std::size_t kReservedSize = 240;
constexpr std::size_t kMapHeaderSize = 28;
constexpr std::size_t kTypeSize = 8;
constexpr std::size_t kReferenceSize = 12;

constexpr std::uint32_t kNoName = 0xFFFFFFFF;
constexpr std::uint32_t kNoData = 0xFFFFFFFF;
/// An offset of 24 bits cannot reach further.
constexpr std::size_t kMostData = 0x1000000;

struct Resource {
    ResType type = 0;
    ResID id = 0;
    std::uint8_t attributes = 0;
    bool isChanged = false;        ///< the bytes of the handle replace those of the file when it is written
    std::uint32_t data = kNoData;  ///< offset of its length in the data; kNoData for one that is not in the file yet
    std::uint32_t name = kNoName;  ///< offset of its length byte in the names
    Handle handle = nullptr;       ///< null until the resource is first loaded
};

struct ResourceMap {
    std::array<char, kReservedSize> reserved{};
    std::uint16_t attributes = 0;
    std::string data;
    std::string names;
    std::vector<Resource> resources;  ///< by type and id; equal ones in the order of the file

    /// Null if there is none.
    Resource* Find(ResType type, ResID id) noexcept;
    /// The first one with this name, ignoring the case of ASCII letters.
    Resource* Find(ResType type, std::string_view name) noexcept;
    Resource* Find(Handle handle) noexcept;

    [[nodiscard]] bool HasName(const Resource& resource) const noexcept { return resource.name != kNoName; }
    /// Empty for one without a name.
    [[nodiscard]] std::string_view NameOf(const Resource& resource) const noexcept;
    /// Its bytes in the file; empty if it is not in the file yet.
    [[nodiscard]] std::string_view DataOf(const Resource& resource) const noexcept;
    /// The bytes to write: those of the handle, in the file's byte order, if it has changed; otherwise those of
    /// the file.
    [[nodiscard]] std::string BytesToWrite(const Resource& resource) const;

    /// The resource's handle, loaded if necessary; null if there is no memory.
    Handle Load(Resource& resource) const;
    /// Takes ownership of the caller's handle as a new resource; an empty name means none.
    void Add(Handle handle, ResType type, ResID id, std::string_view name);
    /// Frees the block of every handle. The handle of the index of string numbers is retired, because the
    /// code that looks numbers up still has it.
    void ReleaseHandles() noexcept;
};

}  // namespace Lum::Internal::Resources
