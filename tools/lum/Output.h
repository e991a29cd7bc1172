// The two forms of every result: small tables for people, JSON for programs.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace Tool {

/// Writes an object as one line. What is not UTF-8 becomes U+FFFD, so that the line is JSON whatever
/// the texts hold.
void WriteJson(const nlohmann::ordered_json& object);

/// Puts together by hand what WriteJson writes: an object of a line, for commands that write millions of them.
class JsonLine {
public:
    JsonLine();
    /// The names are written as they are.
    void Add(std::string_view name, std::string_view text);
    void Add(std::string_view name, bool value);
    void Add(std::string_view name, std::size_t number);
    /// Writes the object.
    void Write() &&;

private:
    void AddName(std::string_view name);

    std::string m_Text;
};

/// One row of a table: a name and a value, which must be printable; an empty value leaves no blanks. A long one
/// goes on in further lines where the terminal is narrow.
std::string Row(std::string_view name, std::string_view value);

}  // namespace Tool
