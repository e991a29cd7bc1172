// A line's form, given by the user: "{host}\t{path:raw}".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/lum/Components.h"

namespace Tool {

/// Text with fields in braces: a component's name, or "text" (the URI printed), "input" and "reason" (why it is not
/// valid). Behind ":raw" a component is as stored. "{{" and "}}" are braces; \t, \n, \r, \0 and \\ are read as in C.
class LineFormat {
public:
    /// What is wrong with a form; "" for a good one.
    static std::string Check(const std::string& form);
    /// Of a form that is good.
    explicit LineFormat(std::string_view form) { Read(form); }

    [[nodiscard]] std::string Filled(const ParsedURI& uri, std::string_view input, const std::string& reason) const;

private:
    /// A text, and the field behind it.
    struct Piece {
        std::string text;
        std::size_t field;
        bool isRaw;
    };

    LineFormat() = default;
    std::string Read(std::string_view form);

    std::vector<Piece> m_Pieces;
};

}  // namespace Tool
