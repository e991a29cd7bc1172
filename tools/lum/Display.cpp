// Which characters are visible, and how wide they are, by the properties that Unicode gives them.
#include "tools/lum/Display.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <unicode/uchar.h>

namespace Tool {
namespace {

struct Character {
    UChar32 value;     ///< -1 of a byte that begins no UTF-8 character.
    std::size_t size;  ///< In bytes.
};

/// The character at the head of `text`, by the well-formed sequences of RFC 3629.
Character Decode(std::string_view text) {
    struct Form {
        unsigned char mask, lead;
        std::uint32_t least;
    };
    constexpr std::array<Form, 4> forms{
        {{0x80, 0x00, 0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}}};
    const auto first = static_cast<unsigned char>(text[0]);
    for (std::size_t size = 1; size <= forms.size(); ++size) {
        const Form& form = forms[size - 1];
        if ((first & form.mask) != form.lead || text.size() < size) {
            continue;
        }
        auto value = static_cast<std::uint32_t>(first & static_cast<unsigned char>(~form.mask));
        for (std::size_t i = 1; i < size; ++i) {
            const auto next = static_cast<unsigned char>(text[i]);
            if ((next & 0xC0) != 0x80) {
                return {-1, 1};
            }
            value = value << 6 | (next & 0x3FU);
        }
        const bool isCharacter = value >= form.least && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
        return isCharacter ? Character{static_cast<UChar32>(value), size} : Character{-1, 1};
    }
    return {-1, 1};
}

/// Not of controls, blanks that look like another, and what turns or hides the text around it.
bool IsVisible(UChar32 value) {
    constexpr UChar32 wideBlank = 0x3000;
    return value == ' ' || value == wideBlank ||
           (value > 0 && u_isgraph(value) != 0 && u_hasBinaryProperty(value, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) == 0);
}

std::size_t ColumnsOf(UChar32 value) {
    const int syllable = u_getIntPropertyValue(value, UCHAR_HANGUL_SYLLABLE_TYPE);
    const bool isInnerJamo = syllable == U_HST_VOWEL_JAMO || syllable == U_HST_TRAILING_JAMO;
    if (isInnerJamo || (U_GET_GC_MASK(value) & (U_GC_MN_MASK | U_GC_ME_MASK)) != 0) {
        return 0;
    }
    const int width = u_getIntPropertyValue(value, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

/// Most texts are of these characters, which take a column each.
bool IsVisibleAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::string Printable(std::string_view text) {
    if (IsVisibleAscii(text)) {
        return std::string(text);
    }
    std::string shown;
    while (!text.empty()) {
        const auto [value, size] = Decode(text);
        if (IsVisible(value)) {
            shown += text.substr(0, size);
        } else {
            constexpr std::string_view digits = "0123456789abcdef";
            for (const char c : text.substr(0, size)) {
                const auto byte = static_cast<unsigned char>(c);
                shown += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
            }
        }
        text.remove_prefix(size);
    }
    return shown;
}

std::size_t Columns(std::string_view printable) {
    if (IsVisibleAscii(printable)) {
        return printable.size();
    }
    std::size_t columns = 0;
    while (!printable.empty()) {
        const auto [value, size] = Decode(printable);
        columns += ColumnsOf(value);
        printable.remove_prefix(size);
    }
    return columns;
}

std::size_t SizeOfColumns(std::string_view printable, std::size_t columns) {
    std::size_t used = 0;
    std::size_t end = 0;
    while (end < printable.size()) {
        const auto [value, size] = Decode(printable.substr(end));
        used += ColumnsOf(value);
        if (end > 0 && used > columns) {
            break;
        }
        end += size;
    }
    return end;
}

}  // namespace Tool
