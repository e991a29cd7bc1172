// A table of localised strings, and the files it is read from.
//
// Old-style text says "key" = "value"; with comments; XML and binary property lists are dictionaries of
// strings. Files are hostile: what is not such a table is refused with the reason.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/CoreFoundation/CFBase.h"

namespace CoreFoundation {

using Units = std::span<const UniChar>;

class StringTable {
public:
    /// Of entries with the same key, the last one counts.
    void Add(Units key, Units value);
    /// To be called behind the last Add, before the first Find.
    void Sort();
    [[nodiscard]] std::optional<Units> Find(Units key) const;

private:
    struct Entry {
        std::uint32_t start, keySize, valueSize;  // the value stands behind the key
    };
    [[nodiscard]] Units KeyOf(const Entry& entry) const { return Units(m_Text).subspan(entry.start, entry.keySize); }

    std::vector<UniChar> m_Text;
    std::vector<Entry> m_Entries;
};

/// Files larger than this are no tables; nor are property lists of half the size, which take longer.
constexpr std::size_t kMostTableBytes = 2 << 20;

/// Reads a file's bytes, of whichever form, into an empty table. Returns what is wrong, for a developer;
/// nothing if all is well.
std::string ReadStringTable(std::string_view bytes, StringTable& table);

/// The forms. Old-style text is in units, without a byte order mark.
std::string ReadTextTable(Units text, StringTable& table);
std::string ReadXmlTable(std::string_view bytes, StringTable& table);
std::string ReadBinaryTable(std::string_view bytes, StringTable& table);

/// The units of UTF-8 text; nothing if it is not valid.
std::optional<std::vector<UniChar>> DecodeUtf8(std::string_view bytes);

}  // namespace CoreFoundation
