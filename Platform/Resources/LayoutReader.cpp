// Reads data and map whole, then the lists of the map. All lists together must not be larger than the map,
// and all data together not larger than the data part. So lists that overlap cost neither time nor memory.
#include "Platform/Resources/Layout.h"

#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

using namespace Lum::Internal;

namespace Lum::Internal::Resources {
namespace {

constexpr const char* kUnreadable = "the file cannot be read";
/// Offsets and counts of 16 bits cannot reach beyond this size of a map.
constexpr std::size_t kMostMap = 0x100000;

struct Part {
    std::uint64_t offset, size;
};

bool Overlap(const Part& a, const Part& b) {
    return std::max(a.offset, b.offset) < std::min(a.offset + a.size, b.offset + b.size);
}

/// A count is stored minus one, so that FFFF stands for 0.
std::size_t ReadCount(std::string_view bytes, std::size_t offset) { return (Read16(bytes, offset) + 1) & 0xFFFF; }

/// The two lists of a map, which lie inside it.
struct ListPlaces {
    std::size_t types = 0, names = 0, typeCount = 0;

    [[nodiscard]] std::size_t TypeAt(std::size_t index) const { return types + 2 + kTypeSize * index; }
};

const char* ReadLists(std::string_view map, ListPlaces& lists) {
    if (map.size() < kMapHeaderSize + 2) {
        return "the map is too short";
    }
    lists.types = Read16(map, kMapHeaderSize - 4);
    lists.names = Read16(map, kMapHeaderSize - 2);
    if (lists.types < kMapHeaderSize || !IsInside(lists.types, 2, map.size()) || lists.names > map.size()) {
        return "a list begins outside the map";
    }
    lists.typeCount = ReadCount(map, lists.types);
    if (!IsInside(lists.TypeAt(0), kTypeSize * lists.typeCount, map.size())) {
        return "the type list ends outside the map";
    }
    return nullptr;
}

/// Counts the references, none of which is outside the map.
const char* CountReferences(std::string_view map, const ListPlaces& lists, std::size_t& references) {
    const std::size_t available = map.size() - lists.TypeAt(lists.typeCount);
    for (std::size_t i = 0; i < lists.typeCount; ++i) {
        const std::size_t type = lists.TypeAt(i);
        const std::size_t count = ReadCount(map, type + 4);
        if (!IsInside(lists.types + Read16(map, type + 6), kReferenceSize * count, map.size())) {
            return "a reference list lies outside the map";
        }
        references += count;
        if (kReferenceSize * references > available) {
            return "reference lists overlap";
        }
    }
    return nullptr;
}

class ReferenceReader {
public:
    ReferenceReader(std::string_view mapBytes, const ListPlaces& lists, ResourceMap& map)
        : m_Bytes(mapBytes), m_Lists(lists), m_Map(map), m_DataLeft(map.data.size()) {}

    const char* ReadAll() {
        for (std::size_t i = 0; i < m_Lists.typeCount; ++i) {
            const std::size_t type = m_Lists.TypeAt(i);
            const std::size_t first = m_Lists.types + Read16(m_Bytes, type + 6);
            for (std::size_t j = 0; j < ReadCount(m_Bytes, type + 4); ++j) {
                if (const char* const problem = ReadOne(Read32(m_Bytes, type), first + kReferenceSize * j)) {
                    return problem;
                }
            }
        }
        return nullptr;
    }

private:
    const char* ReadOne(ResType type, std::size_t reference) {
        Resource resource;
        resource.type = type;
        resource.id = static_cast<ResID>(static_cast<std::uint16_t>(Read16(m_Bytes, reference)));
        resource.attributes = static_cast<std::uint8_t>(m_Bytes[reference + 4]);
        resource.data = Read24(m_Bytes, reference + 5);

        const std::string& data = m_Map.data;
        if (!IsInside(resource.data, 4, data.size()) ||
            !IsInside(std::uint64_t{resource.data} + 4, Read32(data, resource.data), data.size())) {
            return "a resource's data lies outside the data";
        }
        const std::size_t size = 4 + std::size_t{Read32(data, resource.data)};
        if (size > m_DataLeft) {
            return "resources share data";
        }
        m_DataLeft -= size;

        if (const std::uint32_t name = Read16(m_Bytes, reference + 2); name != 0xFFFF) {
            const std::size_t offset = m_Lists.names + name;
            if (!IsInside(offset, 1, m_Bytes.size()) ||
                !IsInside(offset + 1, static_cast<unsigned char>(m_Bytes[offset]), m_Bytes.size())) {
                return "a name lies outside the map";
            }
            resource.name = name;
        }
        m_Map.resources.push_back(resource);
        return nullptr;
    }

    std::string_view m_Bytes;
    const ListPlaces& m_Lists;
    ResourceMap& m_Map;
    std::size_t m_DataLeft;
};

const char* ReadMap(std::string bytes, ResourceMap& map) {
    ListPlaces lists;
    if (const char* const problem = ReadLists(bytes, lists)) {
        return problem;
    }
    std::size_t references = 0;
    if (const char* const problem = CountReferences(bytes, lists, references)) {
        return problem;
    }
    map.attributes = static_cast<std::uint16_t>(Read16(bytes, kMapHeaderSize - 6));
    map.resources.reserve(references);
    if (const char* const problem = ReferenceReader(bytes, lists, map).ReadAll()) {
        return problem;
    }
    std::stable_sort(map.resources.begin(), map.resources.end(), [](const Resource& a, const Resource& b) {
        return std::tie(a.type, a.id) < std::tie(b.type, b.id);
    });
    bytes.erase(0, lists.names);
    map.names = std::move(bytes);
    return nullptr;
}

}  // namespace

const char* ReadLayout(std::uint64_t size, const ReadBytes& read, ResourceMap& map) {
    std::array<char, kHeaderSize> header{};
    if (size < header.size()) {
        return "the file is too short";
    }
    if (!read(0, header.size(), header.data())) {
        return kUnreadable;
    }
    const std::string_view numbers(header.data(), header.size());
    const Part data{Read32(numbers, 0), Read32(numbers, 8)};
    Part mapPart{Read32(numbers, 4), Read32(numbers, 12)};
    if (!IsInside(data.offset, data.size, size) || !IsInside(mapPart.offset, mapPart.size, size)) {
        return "data or map lie outside the file";
    }
    if (Overlap({0, kHeaderSize}, data) || Overlap({0, kHeaderSize}, mapPart) || Overlap(data, mapPart)) {
        return "header, data and map overlap";
    }
    if (data.size > kMostData) {
        return "more data than the layout has room for";
    }
    mapPart.size = std::min<std::uint64_t>(mapPart.size, kMostMap);

    if (std::min(data.offset, mapPart.offset) >= kHeaderSize + kReservedSize &&
        !read(kHeaderSize, kReservedSize, map.reserved.data())) {
        return kUnreadable;
    }
    map.data.resize(static_cast<std::size_t>(data.size));
    std::string mapBytes(static_cast<std::size_t>(mapPart.size), '\0');
    if (!read(data.offset, map.data.size(), map.data.data()) ||
        !read(mapPart.offset, mapBytes.size(), mapBytes.data())) {
        return kUnreadable;
    }
    return ReadMap(std::move(mapBytes), map);
}

const char* ReadLayout(std::string_view file, ResourceMap& map) {
    const auto read = [file](std::uint64_t offset, std::size_t size, char* bytes) {
        std::copy_n(file.data() + offset, size, bytes);
        return true;
    };
    return ReadLayout(file.size(), read, map);
}

}  // namespace Lum::Internal::Resources
