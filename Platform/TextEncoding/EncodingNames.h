// The encodings that have a number: their names, and which converter serves them.
//
// The names are those of the IANA registry of character sets, the aliases that are in common use, and
// "x-mac-..." for what has no registered name. All are in lower case and in one table.
#pragma once

#include <span>
#include <string_view>

#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace Lum::Internal::TextConversion {

constexpr TextEncoding kUnknownEncoding = 0xFFFF;

struct EncodingRow {
    TextEncoding encoding;
    /// What ICU calls its converter; empty where there is none, or it is not ICU's.
    std::string_view converter;
    /// The preferred name and then the aliases, with a space between two.
    std::string_view names;

    [[nodiscard]] constexpr std::string_view PreferredName() const { return names.substr(0, names.find(' ')); }
};

/// Every encoding, by number.
std::span<const EncodingRow> EncodingRows();

/// The row of an encoding, or null.
const EncodingRow* FindEncoding(TextEncoding encoding);

/// The encoding of a name in any case, or kUnknownEncoding.
TextEncoding EncodingOfName(std::string_view name);

/// The same for the code set of a locale name, where only letters and digits count: "eucJP", "utf8".
TextEncoding EncodingOfCodeSet(std::string_view name);

}  // namespace Lum::Internal::TextConversion
