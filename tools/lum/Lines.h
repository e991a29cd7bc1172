// Standard input line by line and standard output, both in bytes, with their failures reported.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// Calls `use` with each line of standard input, without its line feed or the carriage return before
/// it. A last line need not end in a line feed. On a terminal, a long run whose results go elsewhere
/// shows how far it is. Throws std::runtime_error if the input cannot be read.
void ForEachInputLine(const std::function<void(std::string_view)>& use);

/// Calls `use` with each of `texts`, or where there is none with each line of standard input.
void ForEachText(const std::vector<std::string>& texts, const std::function<void(std::string_view)>& use);

/// Writes to standard output; throws std::runtime_error if that fails.
void WriteText(std::string_view text);
void WriteLine(const std::string& text);
void FlushOutput();

/// Writes a line about what went wrong to standard error.
void WriteError(const std::string& message);

}  // namespace Tool
