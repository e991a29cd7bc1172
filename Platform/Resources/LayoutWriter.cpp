// Writes data, types, references and names in the order of the map: by type, then by id. The bytes that are
// reserved for the system and the application are written back as they were read.
#include "Platform/Resources/Layout.h"

#include <algorithm>
#include <cstdint>

using namespace Lum::Internal;

namespace Lum::Internal::Resources {
namespace {

/// Some readers take the offset of the name list for a signed number.
constexpr std::uint64_t kMostNameListOffset = 0x7FFF;
constexpr std::uint64_t kMostNameOffset = 0xFFFE;
/// Attributes that are meant for memory only. Of a file: to be compacted, changed. Of a resource: changed.
constexpr unsigned kMapStateBits = 0x60;
constexpr unsigned kChangedBit = 0x02;

struct Sizes {
    std::uint64_t types = 0, references = 0, names = 0, data = 0;
    std::uint64_t lastName = 0;  ///< where the last name begins

    void Add(bool isNewType, bool hasName, std::size_t nameSize, std::size_t dataSize) {
        types += isNewType ? 1 : 0;
        ++references;
        if (hasName) {
            lastName = names;
            names += 1 + nameSize;
        }
        data += 4 + std::uint64_t{dataSize};
    }
    [[nodiscard]] std::uint64_t NameList() const {
        return kMapHeaderSize + 2 + kTypeSize * types + kReferenceSize * references;
    }
    [[nodiscard]] bool Fit() const {
        return data <= kMostData && NameList() <= kMostNameListOffset && lastName <= kMostNameOffset;
    }
};

Sizes SizesOf(const ResourceMap& map) {
    Sizes sizes;
    const Resource* last = nullptr;
    for (const Resource& resource : map.resources) {
        const std::size_t size =
            resource.isChanged ? static_cast<std::size_t>(GetHandleSize(resource.handle)) : map.DataOf(resource).size();
        sizes.Add(last == nullptr || last->type != resource.type, map.HasName(resource), map.NameOf(resource).size(),
                  size);
        last = &resource;
    }
    return sizes;
}

/// The four parts that grow as resources are written.
struct Lists {
    std::string data, types, references, names;
};

void AppendResource(const ResourceMap& map, const Resource& resource, Lists& lists) {
    Append16(lists.references, static_cast<std::uint16_t>(resource.id));
    Append16(lists.references, map.HasName(resource) ? lists.names.size() : 0xFFFF);
    lists.references.push_back(static_cast<char>(resource.attributes & ~kChangedBit));
    Append24(lists.references, lists.data.size());
    Append32(lists.references, 0);
    if (map.HasName(resource)) {
        const std::string_view name = map.NameOf(resource);
        lists.names.push_back(static_cast<char>(static_cast<unsigned char>(name.size())));
        lists.names += name;
    }
    const std::string bytes = map.BytesToWrite(resource);
    Append32(lists.data, bytes.size());
    lists.data += bytes;
}

Lists ListsOf(const ResourceMap& map, const Sizes& sizes) {
    Lists lists;
    lists.data.reserve(static_cast<std::size_t>(sizes.data));
    const auto firstReference = static_cast<std::size_t>(2 + kTypeSize * sizes.types);
    for (std::size_t i = 0; i < map.resources.size();) {
        const ResType type = map.resources[i].type;
        const std::size_t offset = firstReference + lists.references.size();
        const std::size_t first = i;
        for (; i < map.resources.size() && map.resources[i].type == type; ++i) {
            AppendResource(map, map.resources[i], lists);
        }
        Append32(lists.types, type);
        Append16(lists.types, i - first - 1);
        Append16(lists.types, offset);
    }
    return lists;
}

}  // namespace

std::optional<std::string> WriteLayout(const ResourceMap& map) {
    const Sizes sizes = SizesOf(map);
    if (!sizes.Fit()) {
        return std::nullopt;
    }
    const Lists lists = ListsOf(map, sizes);
    std::string header;
    Append32(header, kHeaderSize + kReservedSize);
    Append32(header, kHeaderSize + kReservedSize + lists.data.size());
    Append32(header, lists.data.size());
    Append32(header, sizes.NameList() + lists.names.size());

    std::string file = header;
    file.append(map.reserved.data(), map.reserved.size());
    file += lists.data;
    file += header;
    AppendNumber(file, 0, 6);
    Append16(file, map.attributes & ~kMapStateBits);
    Append16(file, kMapHeaderSize);
    Append16(file, sizes.NameList());
    Append16(file, sizes.types - 1);
    file += lists.types;
    file += lists.references;
    file += lists.names;
    return file;
}

bool CanAdd(const ResourceMap& map, ResType type, std::size_t nameSize, std::size_t dataSize) {
    Sizes sizes = SizesOf(map);
    const bool isNewType = std::none_of(map.resources.begin(), map.resources.end(),
                                        [type](const Resource& resource) { return resource.type == type; });
    sizes.Add(isNewType, nameSize != 0, nameSize, dataSize);
    return sizes.Fit();
}

}  // namespace Lum::Internal::Resources
