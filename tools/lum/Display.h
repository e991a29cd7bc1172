// Shows bytes of any value on a terminal without letting them act on it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Tool {

/// `text` with everything but visible UTF-8 written as "\xNN", byte by byte.
std::string Printable(std::string_view text);

/// How many columns a terminal gives to a printable text.
std::size_t Columns(std::string_view printable);

/// A line of "^" that stands below `length` bytes of a text, at least one, when Printable shows it.
std::string MarksBelow(std::string_view text, std::size_t offset, std::size_t length);

}  // namespace Tool
