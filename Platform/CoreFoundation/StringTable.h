// A table of localised strings, and the files it is read from.
//
// A file is old-style text with lines such as "key" = "value"; and comments, or an XML or binary property list
// that is one dictionary of strings. A file may have any bytes: every other file is refused with a reason.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/CoreFoundation/CoreFoundation.h"

namespace Lum::Internal::CoreFoundation {

using Units = std::span<const UniChar>;

class StringTable {
public:
    /// If several entries have the same key, the last one is found.
    void Add(Units key, Units value);
    /// To be called after the last Add and before the first Find.
    void Sort();
    [[nodiscard]] std::optional<Units> Find(Units key) const;

private:
    struct Entry {
        std::uint32_t start, keySize, valueSize;  // the value follows the key
    };
    [[nodiscard]] Units KeyOf(const Entry& entry) const { return Units(m_Text).subspan(entry.start, entry.keySize); }

    std::vector<UniChar> m_Text;
    std::vector<Entry> m_Entries;
};

/// Larger files are refused, and property lists of more than half the size, because they take longer to read.
constexpr std::size_t kMostTableBytes = 2 << 20;

/// Reads a file's bytes, of whichever form, into an empty table. Returns what is wrong, for a developer;
/// nothing if all is well.
std::string ReadStringTable(std::string_view bytes, StringTable& table);

/// The forms. Old-style text is in units, without a byte order mark.
std::string ReadTextTable(Units text, StringTable& table);
std::string ReadXmlTable(std::string_view bytes, StringTable& table);
std::string ReadBinaryTable(std::string_view bytes, StringTable& table);

/// What is wrong with a property list as a table; empty or null if nothing is. A list that passes is one
/// dictionary of strings. An XML list then has no element but plist, dict and, in the right order and all
/// closed, pairs of key and string, and declares no entities. A binary list has everything it refers to
/// inside the file, and its texts together are no larger than a small multiple of the file.
std::string CheckXmlList(std::string_view bytes);
const char* CheckBinaryList(std::string_view bytes);

/// The units of UTF-8 text; nothing if the text is not valid.
std::optional<std::vector<UniChar>> DecodeUtf8(std::string_view bytes);

}  // namespace Lum::Internal::CoreFoundation
