// Keeps the offset of every sixteenth string, which takes little memory compared with the strings.
#include <cstddef>

#include "Platform/Resources/Layout.h"
#include "Platform/Resources/OpenFiles.h"

using namespace Lum::Internal;

namespace Lum::Internal::Resources {
namespace {

constexpr std::size_t kStep = 16;

/// Where the string after the one at `offset` begins, which may be outside of `bytes`.
std::size_t After(std::string_view bytes, std::size_t offset) {
    return offset + 1 + static_cast<unsigned char>(bytes[offset]);
}

}  // namespace

void StringList::FindOffsets(std::string_view bytes) {
    m_Offsets.clear();
    m_Block = nullptr;
    const std::size_t count = bytes.size() < 2 ? 0 : Read16(bytes, 0);
    std::size_t offset = 2;
    for (std::size_t i = 0; i < count && offset < bytes.size(); ++i) {
        if (i % kStep == 0) {
            m_Offsets.push_back(static_cast<std::uint32_t>(offset));
        }
        offset = After(bytes, offset);
    }
    m_Block = bytes.data();
    m_Size = bytes.size();
}

std::string_view StringList::Find(std::string_view bytes, short index) {
    if (bytes.data() != m_Block || bytes.size() != m_Size) {
        FindOffsets(bytes);
    }
    if (index < 1 || bytes.size() < 2 || static_cast<unsigned>(index) > Read16(bytes, 0)) {
        return {};
    }
    const auto before = static_cast<std::size_t>(index) - 1;
    if (before / kStep >= m_Offsets.size()) {
        return {};
    }
    std::size_t offset = m_Offsets[before / kStep];
    for (std::size_t i = before % kStep; i > 0 && offset < bytes.size(); --i) {
        offset = After(bytes, offset);
    }
    if (offset >= bytes.size() || After(bytes, offset) > bytes.size()) {
        return {};
    }
    return bytes.substr(offset + 1, static_cast<unsigned char>(bytes[offset]));
}

}  // namespace Lum::Internal::Resources
