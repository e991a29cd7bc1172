// Reads a form once and fills it for each URI.
#include "tools/lum/LineFormat.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Tool {
namespace {

// The fields behind the components, by number.
constexpr std::size_t kText = 9;
constexpr std::size_t kInput = 10;
constexpr std::size_t kReason = 11;
constexpr std::size_t kNone = 12;
constexpr std::array<std::string_view, 3> kMoreFields{"text", "input", "reason"};

std::size_t FieldOf(std::string_view name) {
    if (const std::size_t component = IndexOfComponent(name); component < kText) {
        return component;
    }
    return kText +
           static_cast<std::size_t>(std::find(kMoreFields.begin(), kMoreFields.end(), name) - kMoreFields.begin());
}

/// The character that a letter behind a backslash stands for, or -1.
int Escaped(char letter) {
    constexpr std::string_view letters = "tnr0\\";
    const std::size_t at = letters.find(letter);
    return at == std::string_view::npos ? -1 : std::string_view("\t\n\r\0\\", 5)[at];
}

}  // namespace

std::string LineFormat::Check(const std::string& form) { return LineFormat().Read(form); }

std::string LineFormat::Read(std::string_view form) {
    std::string text;
    while (!form.empty()) {
        const char first = form.front();
        const char second = form.size() > 1 ? form[1] : '\0';
        std::size_t taken = 1;
        if (first == '\\') {
            const int character = form.size() > 1 ? Escaped(second) : -1;
            if (character < 0) {
                return "what does \"" + std::string(form.substr(0, 2)) + "\" mean? Known are \\t \\n \\r \\0 \\\\";
            }
            text += static_cast<char>(character);
            taken = 2;
        } else if ((first == '{' || first == '}') && second == first) {
            text += first;
            taken = 2;
        } else if (first == '{' && form.find('}') != std::string_view::npos) {
            constexpr std::string_view raw = ":raw";
            std::string_view name = form.substr(1, form.find('}') - 1);
            taken = name.size() + 2;
            const bool isRaw = name.ends_with(raw);
            name.remove_suffix(isRaw ? raw.size() : 0);
            const std::size_t field = FieldOf(name);
            if (field == kNone) {
                return "no field \"" + std::string(name) + '"';
            }
            m_Pieces.push_back({std::exchange(text, {}), field, isRaw});
        } else if (first == '{' || first == '}') {
            return std::string("a lone \"") + first + "\"; write it twice";
        } else {
            text += first;
        }
        form.remove_prefix(taken);
    }
    m_Pieces.push_back({std::move(text), kNone, false});
    return {};
}

std::string LineFormat::Filled(const ParsedURI& uri, std::string_view input, const std::string& reason) const {
    std::string line;
    for (const Piece& piece : m_Pieces) {
        line += piece.text;
        switch (piece.field) {
            case kText:
                line += reason.empty() ? uri.ToString(false) : "";
                break;
            case kInput:
                line += input;
                break;
            case kReason:
                line += reason;
                break;
            case kNone:
                break;
            default:
                line += uri.Read(piece.field, piece.isRaw);
        }
    }
    return line;
}

}  // namespace Tool
