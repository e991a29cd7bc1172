// How tables look: their colours, and lines that fit the terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/App.hpp>

namespace Tool {

/// What a piece of a table is.
enum class Piece { kSubject, kName, kGood, kBad };

/// Adds --color. Without it, and for "auto", there are colours on a terminal where NO_COLOR is not set.
void AddColor(CLI::App& command);

/// A piece in its colour, or as it is where there are none.
std::string Colored(Piece piece, std::string text);

/// A printable text cut into lines of at most so many columns, at blanks where there are some; 0 is no limit.
std::vector<std::string_view> Wrapped(std::string_view printable, std::size_t columns, bool atBlanks = true);

/// A printable text that begins in column `indent` and goes on there in further lines where the terminal is narrow.
std::string Indented(std::string_view printable, std::size_t indent);

/// The line that heads a table: a text of any bytes, printable. It is not cut, so that it can be copied.
std::string Subject(std::string_view text);

/// Such a text cut where the terminal is narrow, and "^" below `length` bytes of it, at least one.
std::string Marked(std::string_view text, std::size_t offset, std::size_t length);

}  // namespace Tool
