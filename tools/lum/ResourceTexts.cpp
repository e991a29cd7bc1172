// Cuts resources into their texts. Bytes that are no text in the application's encoding are shown as such.
#include "tools/lum/ResourceTexts.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include <Lum/Platform.h>

#include "tools/lum/Display.h"
#include "tools/lum/Look.h"

namespace Tool {
namespace {

using Lum::Platform::ResourceEntry;

std::uint32_t NumberAt(std::string_view bytes, std::size_t offset) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[offset]) << 8 |
                                      static_cast<unsigned char>(bytes[offset + 1]));
}

/// UTF-8 of bytes in the application's encoding, or the bytes themselves.
std::string Decode(std::string_view bytes, bool isUnicode = false) {
    char** const handle = NewHandle(static_cast<long>(bytes.size()));
    if (handle == nullptr) {
        throw std::bad_alloc();
    }
    bytes.copy(*handle, bytes.size());
    CString text;
    isUnicode ? text.LoadUnicodeString(handle) : text.LoadString(handle);
    DisposeHandle(handle);
    return text.IsEmpty() ? std::string(bytes) : text.ToUTF8();
}

/// What a Pascal string that begins at `offset` holds; cut where the bytes end.
std::string_view PascalAt(std::string_view bytes, std::size_t offset) {
    return offset < bytes.size() ? bytes.substr(offset + 1, static_cast<unsigned char>(bytes[offset]))
                                 : std::string_view();
}

/// A text with what stands in front of it.
using Labelled = std::pair<std::string, std::string>;

std::vector<Labelled> TextsOf(const ResourceEntry& resource) {
    const std::string_view bytes = resource.bytes;
    std::vector<Labelled> texts;
    if (resource.type == kSingleString) {
        texts.emplace_back("", Decode(PascalAt(bytes, 0)));
    } else if (resource.type == kText || resource.type == kUnicodeText) {
        texts.emplace_back("", Decode(bytes, resource.type == kUnicodeText));
    } else if (resource.type == kStringList && bytes.size() >= 2) {
        std::size_t offset = 2;
        for (std::uint32_t i = 1; i <= NumberAt(bytes, 0) && offset < bytes.size(); ++i) {
            texts.emplace_back(std::to_string(i), Decode(PascalAt(bytes, offset)));
            offset += 1U + static_cast<unsigned char>(bytes[offset]);
        }
    } else if (resource.type == kIndex) {
        constexpr std::uint32_t firstList = 200, stringsPerList = 500;
        for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
            const std::uint32_t position = NumberAt(bytes, i + 2);
            texts.emplace_back(std::to_string(NumberAt(bytes, i)),
                               "STR# " + std::to_string(firstList + position / stringsPerList) + ", " +
                                   std::to_string(position % stringsPerList + 1));
        }
    }
    return texts;
}

bool HasTexts(std::uint32_t type) {
    return type == kSingleString || type == kStringList || type == kIndex || type == kText || type == kUnicodeText;
}

std::string TypeOf(const ResourceEntry& resource) {
    std::string type;
    for (const int shift : {24, 16, 8, 0}) {
        type += static_cast<char>(static_cast<unsigned char>(resource.type >> shift));
    }
    return type;
}

std::string RightAligned(const std::string& text, std::size_t columns) {
    return std::string(text.size() < columns ? columns - text.size() : 0, ' ') + text;
}

}  // namespace

std::string AsRows(const ResourceEntry& resource) {
    constexpr std::size_t idColumns = 7, textColumn = 13;
    std::string rows = Printable(TypeOf(resource)) + RightAligned(std::to_string(resource.id), idColumns);
    if (!resource.name.empty()) {
        rows += "  " + Printable(Decode(resource.name));
    }
    if (!HasTexts(resource.type)) {
        rows += "  (" + std::to_string(resource.bytes.size()) + " bytes)";
    }
    rows += '\n';
    for (const auto& [label, text] : TextsOf(resource)) {
        rows += RightAligned(label, label.empty() ? textColumn : textColumn + 3);
        rows += label.empty() ? "" : "  ";
        rows += Indented(Printable(text), label.empty() ? textColumn : textColumn + 5);
        rows += '\n';
    }
    return rows;
}

nlohmann::ordered_json AsJson(const ResourceEntry& resource) {
    nlohmann::ordered_json object = {{"type", TypeOf(resource)},
                                     {"id", resource.id},
                                     {"name", Decode(resource.name)},
                                     {"size", resource.bytes.size()}};
    if (HasTexts(resource.type)) {
        auto texts = nlohmann::ordered_json::array();
        for (const auto& [label, text] : TextsOf(resource)) {
            const bool isLabelled = !label.empty() && resource.type != kStringList;
            texts.push_back(isLabelled ? std::string(label).append(": ").append(text) : text);
        }
        object["texts"] = texts;
    }
    return object;
}

CString PascalAsUnits(const CString& text) {
    std::array<unsigned char, 258> pascal{};
    text.ToMac(pascal.data(), 257);
    if (pascal[0] == 0 && !text.IsEmpty()) {
        throw std::runtime_error("a text of this type has at most 255 bytes, all of them in the encoding");
    }
    const std::size_t size = (1U + pascal[0] + 1U) / 2;
    CString units;
    unsigned short* const buffer = units.GetBufferSetLength(static_cast<int>(size));
    std::memcpy(buffer, pascal.data(), 2 * size);
    units.ReleaseBuffer(static_cast<int>(size));
    return units;
}

}  // namespace Tool
