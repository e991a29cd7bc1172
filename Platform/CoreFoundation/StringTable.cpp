// Keeps the texts of a table in one block, with a sorted list of their offsets, and recognises the form of a
// file by its first bytes.
#include "Platform/CoreFoundation/StringTable.h"

#include <algorithm>
#include <limits>
#include <new>

#include "Platform/TextEncoding/Converter.h"

using namespace Lum::Internal;

namespace Lum::Internal::CoreFoundation {
namespace {

constexpr TextEncoding kUtf8 = 0x08000100;

bool IsLess(Units a, Units b) { return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end()); }

/// Units from bytes in either byte order. An odd byte at the end is ignored.
std::vector<UniChar> UnitsOf(std::string_view bytes, bool isBigEndian) {
    std::vector<UniChar> units(bytes.size() / 2);
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        units[i] = static_cast<UniChar>(isBigEndian ? first << 8 | second : second << 8 | first);
    }
    return units;
}

bool IsXml(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '<';
}

}  // namespace

void StringTable::Add(Units key, Units value) {
    if (m_Text.size() + key.size() + value.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::bad_alloc();
    }
    m_Entries.push_back({static_cast<std::uint32_t>(m_Text.size()), static_cast<std::uint32_t>(key.size()),
                         static_cast<std::uint32_t>(value.size())});
    m_Text.insert(m_Text.end(), key.begin(), key.end());
    m_Text.insert(m_Text.end(), value.begin(), value.end());
}

void StringTable::Sort() {
    std::stable_sort(m_Entries.begin(), m_Entries.end(),
                     [this](const Entry& a, const Entry& b) { return IsLess(KeyOf(a), KeyOf(b)); });
}

std::optional<Units> StringTable::Find(Units key) const {
    const auto behind =
        std::upper_bound(m_Entries.begin(), m_Entries.end(), key,
                         [this](Units wanted, const Entry& entry) { return IsLess(wanted, KeyOf(entry)); });
    if (behind == m_Entries.begin() || IsLess(KeyOf(behind[-1]), key)) {
        return std::nullopt;
    }
    return Units(m_Text).subspan(behind[-1].start + behind[-1].keySize, behind[-1].valueSize);
}

std::optional<std::vector<UniChar>> DecodeUtf8(std::string_view bytes) {
    const TextConversion::OwnedConverter converter(kUtf8, kTextEncodingUnicodeDefault);
    std::vector<UniChar> units(bytes.size());
    const auto step = converter.Convert({reinterpret_cast<ConstTextPtr>(bytes.data()), bytes.size()},
                                        {reinterpret_cast<TextPtr>(units.data()), units.size() * sizeof(UniChar)});
    units.resize(step.written / sizeof(UniChar));
    return step.status == noErr ? std::optional(std::move(units)) : std::nullopt;
}

std::string ReadStringTable(std::string_view bytes, StringTable& table) {
    if (bytes.size() > kMostTableBytes) {
        return "larger than any table";
    }
    if (bytes.starts_with("bplist")) {
        return ReadBinaryTable(bytes, table);
    }
    const bool isBigEndian = bytes.starts_with("\xFE\xFF");
    if (isBigEndian || bytes.starts_with("\xFF\xFE")) {
        return bytes.size() % 2 != 0 ? "half a unit of UTF-16 at the end"
                                     : ReadTextTable(UnitsOf(bytes.substr(2), isBigEndian), table);
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    }
    const auto units = DecodeUtf8(bytes);
    if (!units) {
        return "not UTF-8, nor UTF-16 with a byte order mark";
    }
    return IsXml(bytes) ? ReadXmlTable(bytes, table) : ReadTextTable(*units, table);
}

}  // namespace Lum::Internal::CoreFoundation
