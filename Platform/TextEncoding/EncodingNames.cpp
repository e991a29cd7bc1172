// Looks encodings up by number and by name.
#include "Platform/TextEncoding/EncodingNames.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "Platform/TextEncoding/EncodingTable.h"

using namespace Lum::Internal;

namespace {

using TextConversion::EncodingRow;
using TextConversion::kEncodingTable;

struct NameEntry {
    std::string_view name;
    TextEncoding encoding;
};

/// Calls `use` with each name of a row, the preferred one first.
template <class Use>
constexpr void ForEachName(const EncodingRow& row, const Use& use) {
    for (std::string_view rest = row.names; !rest.empty();) {
        const std::size_t size = std::min(rest.find(' '), rest.size());
        use(rest.substr(0, size));
        rest.remove_prefix(std::min(size + 1, rest.size()));
    }
}

constexpr std::size_t kNameCount = [] {
    std::size_t count = 0;
    for (const EncodingRow& row : kEncodingTable) {
        ForEachName(row, [&](std::string_view /*name*/) { ++count; });
    }
    return count;
}();

constexpr auto kNames = [] {
    std::array<NameEntry, kNameCount> names{};
    std::size_t count = 0;
    for (const EncodingRow& row : kEncodingTable) {
        ForEachName(row, [&](std::string_view name) { names[count++] = {name, row.encoding}; });
    }
    std::sort(names.begin(), names.end(), [](const NameEntry& a, const NameEntry& b) { return a.name < b.name; });
    return names;
}();

constexpr std::size_t kLongestName = [] {
    std::size_t longest = 0;
    for (const NameEntry& entry : kNames) {
        longest = std::max(longest, entry.name.size());
    }
    return longest;
}();

static_assert(std::adjacent_find(kNames.begin(), kNames.end(),
                                 [](const NameEntry& a, const NameEntry& b) { return a.name == b.name; }) ==
                  kNames.end(),
              "a name belongs to one encoding");
static_assert(std::is_sorted(kEncodingTable.begin(), kEncodingTable.end(),
                             [](const EncodingRow& a, const EncodingRow& b) { return a.encoding < b.encoding; }));

constexpr char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

constexpr bool IsLetterOrDigit(char c) { return (c >= '0' && c <= '9') || (ToLower(c) >= 'a' && ToLower(c) <= 'z'); }

/// Whether two names have the same letters and digits, case and all else ignored.
bool IsLooselyEqual(std::string_view a, std::string_view b) {
    const auto take = [](std::string_view& text) {
        while (!text.empty() && !IsLetterOrDigit(text[0])) {
            text.remove_prefix(1);
        }
        const char taken = text.empty() ? '\0' : ToLower(text[0]);
        text.remove_prefix(text.empty() ? 0 : 1);
        return taken;
    };
    for (;;) {
        const char x = take(a);
        if (x != take(b)) {
            return false;
        }
        if (x == '\0') {
            return true;
        }
    }
}

}  // namespace

namespace Lum::Internal::TextConversion {

std::span<const EncodingRow> EncodingRows() { return kEncodingTable; }

const EncodingRow* FindEncoding(TextEncoding encoding) {
    const auto* const row =
        std::lower_bound(kEncodingTable.begin(), kEncodingTable.end(), encoding,
                         [](const EncodingRow& candidate, TextEncoding wanted) { return candidate.encoding < wanted; });
    return row != kEncodingTable.end() && row->encoding == encoding ? row : nullptr;
}

TextEncoding EncodingOfName(std::string_view name) {
    if (name.size() > kLongestName) {
        return kUnknownEncoding;
    }
    std::array<char, kLongestName> buffer;
    std::transform(name.begin(), name.end(), buffer.begin(), ToLower);
    const std::string_view lower(buffer.data(), name.size());
    const auto* const entry =
        std::lower_bound(kNames.begin(), kNames.end(), lower,
                         [](const NameEntry& candidate, std::string_view wanted) { return candidate.name < wanted; });
    return entry != kNames.end() && entry->name == lower ? entry->encoding : kUnknownEncoding;
}

TextEncoding EncodingOfCodeSet(std::string_view name) {
    const auto* const entry = std::find_if(
        kNames.begin(), kNames.end(), [&](const NameEntry& candidate) { return IsLooselyEqual(candidate.name, name); });
    return entry != kNames.end() ? entry->encoding : kUnknownEncoding;
}

}  // namespace Lum::Internal::TextConversion

OSStatus TECGetTextEncodingFromInternetName(TextEncoding* encoding, ConstStr255Param name) {
    *encoding = TextConversion::EncodingOfName({reinterpret_cast<const char*>(name + 1), name[0]});
    return *encoding != TextConversion::kUnknownEncoding ? noErr : kTextUnsupportedEncodingErr;
}

OSStatus TECGetTextEncodingInternetName(TextEncoding encoding, Str255 name) {
    const TextConversion::EncodingRow* const row = TextConversion::FindEncoding(encoding);
    const std::string_view found = row != nullptr ? row->PreferredName() : std::string_view();
    name[0] = static_cast<unsigned char>(found.size());
    std::memcpy(name + 1, found.data(), found.size());
    return row != nullptr ? noErr : kTextUnsupportedEncodingErr;
}
