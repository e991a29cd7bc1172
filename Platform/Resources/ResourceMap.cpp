// Looks resources up and loads their bytes. In memory the bytes are those of the file, except for the index of
// string numbers, whose 16-bit fields are in the byte order of the host.
#include "Platform/Resources/ResourceMap.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

#include "Platform/Resources/Layout.h"

using namespace Lum::Internal;

namespace Lum::Internal::Resources {
namespace {

constexpr ResType kIndexType = 0x5354526D;  // 'STRm'

/// Converts from the file's byte order to the host's or back. An odd byte at the end stays as it is.
void SwapFields(ResType type, char* bytes, std::size_t size) {
    if (type != kIndexType || std::endian::native == std::endian::big) {
        return;
    }
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        std::uint16_t field = 0;
        std::memcpy(&field, bytes + i, sizeof field);
        field = static_cast<std::uint16_t>(field << 8 | field >> 8);
        std::memcpy(bytes + i, &field, sizeof field);
    }
}

char ToAsciiLower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

bool EqualNames(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToAsciiLower(x) == ToAsciiLower(y); });
}

auto OfType(std::vector<Resource>& resources, ResType type) noexcept {
    struct ByType {
        bool operator()(const Resource& resource, ResType code) const noexcept { return resource.type < code; }
        bool operator()(ResType code, const Resource& resource) const noexcept { return code < resource.type; }
    };
    return std::equal_range(resources.begin(), resources.end(), type, ByType());
}

using Key = std::pair<ResType, ResID>;
struct ByKey {
    static Key KeyOf(const Resource& resource) noexcept { return {resource.type, resource.id}; }
    bool operator()(const Resource& resource, const Key& key) const noexcept { return KeyOf(resource) < key; }
    bool operator()(const Key& key, const Resource& resource) const noexcept { return key < KeyOf(resource); }
};

}  // namespace

Resource* ResourceMap::Find(ResType type, ResID id) noexcept {
    const auto found = std::lower_bound(resources.begin(), resources.end(), Key(type, id), ByKey());
    return found != resources.end() && found->type == type && found->id == id ? &*found : nullptr;
}

Resource* ResourceMap::Find(ResType type, std::string_view name) noexcept {
    const auto [first, last] = OfType(resources, type);
    const auto found = std::find_if(
        first, last, [&](const Resource& resource) { return HasName(resource) && EqualNames(NameOf(resource), name); });
    return found == last ? nullptr : &*found;
}

Resource* ResourceMap::Find(Handle handle) noexcept {
    const auto found = std::find_if(resources.begin(), resources.end(),
                                    [&](const Resource& resource) { return resource.handle == handle; });
    return handle == nullptr || found == resources.end() ? nullptr : &*found;
}

std::string_view ResourceMap::NameOf(const Resource& resource) const noexcept {
    if (!HasName(resource)) {
        return {};
    }
    const auto size = static_cast<unsigned char>(names[resource.name]);
    return std::string_view(names).substr(resource.name + 1, size);
}

std::string_view ResourceMap::DataOf(const Resource& resource) const noexcept {
    if (resource.data == kNoData) {
        return {};
    }
    return std::string_view(data).substr(resource.data + 4, Read32(data, resource.data));
}

std::string ResourceMap::BytesToWrite(const Resource& resource) const {
    if (!resource.isChanged) {
        return std::string(DataOf(resource));
    }
    std::string bytes(*resource.handle, static_cast<std::size_t>(GetHandleSize(resource.handle)));
    SwapFields(resource.type, bytes.data(), bytes.size());
    return bytes;
}

Handle ResourceMap::Load(Resource& resource) const {
    if (resource.handle != nullptr) {
        return resource.handle;
    }
    const std::string_view bytes = DataOf(resource);
    char** const handle = NewHandle(static_cast<Size>(bytes.size()));
    if (handle != nullptr) {
        std::copy(bytes.begin(), bytes.end(), *handle);
        SwapFields(resource.type, *handle, bytes.size());
        SetOwner(handle, HandleOwner::kFile);
        resource.handle = handle;
    }
    return handle;
}

void ResourceMap::Add(Handle handle, ResType type, ResID id, std::string_view name) {
    Resource resource;
    resource.type = type;
    resource.id = id;
    resource.isChanged = true;
    resource.handle = handle;
    if (!name.empty()) {
        resource.name = static_cast<std::uint32_t>(names.size());
        names.push_back(static_cast<char>(static_cast<unsigned char>(name.size())));
        names += name;
    }
    resources.insert(std::upper_bound(resources.begin(), resources.end(), Key(type, id), ByKey()), resource);
    SetOwner(handle, HandleOwner::kFile);
}

void ResourceMap::ReleaseHandles() noexcept {
    for (Resource& resource : resources) {
        SetOwner(resource.handle, resource.type == kIndexType ? HandleOwner::kRetired : HandleOwner::kNobody);
        resource.handle = nullptr;
    }
}

}  // namespace Lum::Internal::Resources
