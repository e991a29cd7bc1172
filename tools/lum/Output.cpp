// Formats results.
#include "tools/lum/Output.h"

#include <cstddef>

#include "tools/lum/Lines.h"
#include "tools/lum/Look.h"

namespace Tool {
namespace {

std::string ToText(const nlohmann::ordered_json& json) {
    return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

/// Whether JSON shows the text as it is. Free of branches, so that the compiler makes vector code of it.
bool IsPlain(std::string_view text) {
    unsigned others = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        others |= static_cast<unsigned>(byte < ' ') | static_cast<unsigned>(byte > '~') |
                  static_cast<unsigned>(byte == '"') | static_cast<unsigned>(byte == '\\');
    }
    return others == 0;
}

}  // namespace

void WriteJson(const nlohmann::ordered_json& object) { WriteLine(ToText(object)); }

JsonLine::JsonLine() { m_Text.reserve(1024); }

void JsonLine::Add(std::string_view name, std::string_view text) {
    AddName(name);
    if (IsPlain(text)) {
        m_Text += '"';
        m_Text += text;
        m_Text += '"';
    } else {
        m_Text += ToText(text);
    }
}

void JsonLine::Add(std::string_view name, bool value) {
    AddName(name);
    m_Text += value ? "true" : "false";
}

void JsonLine::Add(std::string_view name, std::size_t number) {
    AddName(name);
    m_Text += std::to_string(number);
}

void JsonLine::Write() && {
    m_Text += "}\n";
    WriteText(m_Text);
}

void JsonLine::AddName(std::string_view name) {
    m_Text += m_Text.empty() ? '{' : ',';
    m_Text += '"';
    m_Text += name;
    m_Text += '"';
    m_Text += ':';
}

std::string Row(std::string_view name, std::string_view value) {
    constexpr std::size_t nameColumns = 18, indent = 2;
    const Piece piece = name == "valid" ? Piece::kGood : (name == "not valid" ? Piece::kBad : Piece::kName);
    std::string row(indent, ' ');
    row += Colored(piece, std::string(name));
    if (!value.empty()) {
        row.append(nameColumns - name.size(), ' ').append(Indented(value, indent + nameColumns));
    }
    return row + '\n';
}

}  // namespace Tool
