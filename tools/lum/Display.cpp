// Which characters are visible, and how wide they are.
#include "tools/lum/Display.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace Tool {
namespace {

struct Character {
    std::uint32_t value;
    std::size_t size;  ///< In bytes; 0 if no UTF-8 character starts here.
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
                return {0, 0};
            }
            value = value << 6 | (next & 0x3FU);
        }
        const bool isCharacter = value >= form.least && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
        return {value, isCharacter ? size : 0};
    }
    return {0, 0};
}

struct Range {
    std::uint32_t first, last;
};

template <std::size_t N>
bool IsIn(const std::array<Range, N>& ranges, std::uint32_t value) {
    return std::any_of(ranges.begin(), ranges.end(),
                       [&](const Range& range) { return value >= range.first && value <= range.last; });
}

// Controls, and what turns or hides the text around it.
constexpr std::array<Range, 8> kInvisible{{{0x00, 0x1F},
                                           {0x7F, 0xA0},
                                           {0xAD, 0xAD},
                                           {0x200B, 0x200F},
                                           {0x2028, 0x202E},
                                           {0x2060, 0x206F},
                                           {0xFE00, 0xFE0F},
                                           {0xFEFF, 0xFEFF}}};
constexpr std::array<Range, 8> kWide{{{0x1100, 0x115F},
                                      {0x2E80, 0xA4CF},
                                      {0xAC00, 0xD7A3},
                                      {0xF900, 0xFAFF},
                                      {0xFE30, 0xFE6F},
                                      {0xFF00, 0xFF60},
                                      {0x1F300, 0x1FAFF},
                                      {0x20000, 0x3FFFD}}};
constexpr std::array<Range, 3> kCombining{{{0x0300, 0x036F}, {0x20D0, 0x20FF}, {0xFE20, 0xFE2F}}};

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
        const Character character = Decode(text);
        if (character.size != 0 && !IsIn(kInvisible, character.value)) {
            shown += text.substr(0, character.size);
            text.remove_prefix(character.size);
            continue;
        }
        constexpr std::string_view digits = "0123456789abcdef";
        for (std::size_t i = 0; i < std::max<std::size_t>(character.size, 1); ++i) {
            const auto byte = static_cast<unsigned char>(text[i]);
            shown += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
        }
        text.remove_prefix(std::max<std::size_t>(character.size, 1));
    }
    return shown;
}

std::size_t Columns(std::string_view printable) {
    if (IsVisibleAscii(printable)) {
        return printable.size();
    }
    std::size_t columns = 0;
    while (!printable.empty()) {
        const Character character = Decode(printable);
        columns += IsIn(kWide, character.value) ? 2 : (IsIn(kCombining, character.value) ? 0 : 1);
        printable.remove_prefix(std::max<std::size_t>(character.size, 1));
    }
    return columns;
}

std::string MarksBelow(std::string_view text, std::size_t offset, std::size_t length) {
    const std::size_t width = Columns(Printable(text.substr(offset, length)));
    return std::string(Columns(Printable(text.substr(0, offset))), ' ') +
           std::string(std::max<std::size_t>(width, 1), '^') + '\n';
}

}  // namespace Tool
