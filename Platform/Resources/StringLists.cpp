// Keeps the place of every sixteenth string: little memory beside strings of a few bytes.
#include "Platform/Resources/StringLists.h"

#include <cstddef>

#include "Platform/Resources/BigEndian.h"

namespace Resources {
namespace {

constexpr std::size_t kStep = 16;

/// Where the string behind the one at `place` begins, perhaps outside.
std::size_t Behind(std::string_view bytes, std::size_t place) {
    return place + 1 + static_cast<unsigned char>(bytes[place]);
}

}  // namespace

void StringList::FindPlaces(std::string_view bytes) {
    m_Places.clear();
    m_Block = nullptr;
    const std::size_t count = bytes.size() < 2 ? 0 : Read16(bytes, 0);
    std::size_t place = 2;
    for (std::size_t i = 0; i < count && place < bytes.size(); ++i) {
        if (i % kStep == 0) {
            m_Places.push_back(static_cast<std::uint32_t>(place));
        }
        place = Behind(bytes, place);
    }
    m_Block = bytes.data();
    m_Size = bytes.size();
}

std::string_view StringList::Find(std::string_view bytes, short index) {
    if (bytes.data() != m_Block || bytes.size() != m_Size) {
        FindPlaces(bytes);
    }
    if (index < 1 || bytes.size() < 2 || static_cast<unsigned>(index) > Read16(bytes, 0)) {
        return {};
    }
    const auto before = static_cast<std::size_t>(index) - 1;
    if (before / kStep >= m_Places.size()) {
        return {};
    }
    std::size_t place = m_Places[before / kStep];
    for (std::size_t i = before % kStep; i > 0 && place < bytes.size(); --i) {
        place = Behind(bytes, place);
    }
    if (place >= bytes.size() || Behind(bytes, place) > bytes.size()) {
        return {};
    }
    return bytes.substr(place + 1, static_cast<unsigned char>(bytes[place]));
}

}  // namespace Resources
