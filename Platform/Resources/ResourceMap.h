// The contents of one resource file in memory, and how they are found.
//
// The layout, every number big-endian: a header of 16 bytes (places and lengths of data and map), room
// for the system and the application up to byte 256, the data (each resource behind its 32-bit length)
// and the map: a copy of the header, 6 bytes for the system, attributes, the places of type list and
// name list; types (code, count less one, place of its references); references (id, place of the name,
// attributes, 24-bit place of the data, 4 bytes for the system); names (length byte and text).
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

namespace Resources {

constexpr std::size_t kHeaderSize = 16;
constexpr std::size_t kReservedSize = 240;
constexpr std::size_t kMapHeaderSize = 28;
constexpr std::size_t kTypeSize = 8;
constexpr std::size_t kReferenceSize = 12;

constexpr std::uint32_t kNoName = 0xFFFFFFFF;
constexpr std::uint32_t kNoData = 0xFFFFFFFF;
/// An offset of 24 bits reaches no further.
constexpr std::size_t kMostData = 0x1000000;

struct Resource {
    ResType type = 0;
    ResID id = 0;
    std::uint8_t attributes = 0;
    bool isChanged = false;        ///< the handle's bytes are to be written, not the file's
    std::uint32_t data = kNoData;  ///< where its length stands in the data; kNoData if it is not there yet
    std::uint32_t name = kNoName;  ///< where its length byte stands among the names
    Handle handle = nullptr;       ///< null until it is asked for
};

struct ResourceMap {
    std::array<char, kReservedSize> reserved{};
    std::uint16_t attributes = 0;
    std::string data;
    std::string names;
    std::vector<Resource> resources;  ///< by type and id; of equals, the file's first one first

    /// Null if there is none.
    Resource* Find(ResType type, ResID id) noexcept;
    /// The first one of a name, in any case of the ASCII letters.
    Resource* Find(ResType type, std::string_view name) noexcept;
    Resource* Find(Handle handle) noexcept;

    [[nodiscard]] bool HasName(const Resource& resource) const noexcept { return resource.name != kNoName; }
    /// Empty for one without a name.
    [[nodiscard]] std::string_view NameOf(const Resource& resource) const noexcept;
    /// Its bytes in the file; none if it is not there yet.
    [[nodiscard]] std::string_view DataOf(const Resource& resource) const noexcept;
    /// What is to be written: the handle's bytes in the file's order if it has changed, else the file's.
    [[nodiscard]] std::string BytesToWrite(const Resource& resource) const;

    /// The resource's handle, loaded if need be; null if there is no memory.
    Handle Load(Resource& resource) const;
    /// Takes over the caller's handle as a new resource; an empty name is none.
    void Add(Handle handle, ResType type, ResID id, std::string_view name);
    /// Gives every handle's block back. That of the index of string numbers is retired, for it is kept by
    /// those who look numbers up.
    void ReleaseHandles() noexcept;
};

}  // namespace Resources
