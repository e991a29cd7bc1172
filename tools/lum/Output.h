// The two forms of every result: small tables for people, JSON for programs.
#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace Tool {

/// Writes an object as one line. What is not UTF-8 becomes U+FFFD, so that the line is JSON whatever
/// the texts hold.
void WriteJson(const nlohmann::ordered_json& object);

/// One row of a table: a name and a value, which must be printable; an empty value leaves no blanks.
std::string Row(std::string_view name, std::string_view value);

}  // namespace Tool
