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

/// How many bytes at the head of a printable text fit into so many columns: at least one character, with the marks
/// that combine with it.
std::size_t SizeOfColumns(std::string_view printable, std::size_t columns);

}  // namespace Tool
