// Standard input line by line and standard output, both in bytes, with their failures reported.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace Tool {

/// Calls `use` with each line of standard input, without the `end` that ends it, nor a carriage return
/// before a line feed. A last line need not be ended. What has been written is flushed before the next
/// input is waited for. On a terminal, a long run whose results go elsewhere shows how far it is.
/// Throws std::runtime_error if the input cannot be read.
void ForEachInputLine(char end, const std::function<void(std::string_view)>& use);

/// Writes to standard output; throws std::runtime_error if that fails.
void WriteText(std::string_view text);
void WriteLine(const std::string& text);
void FlushOutput();

/// Writes a line about what went wrong to standard error.
void WriteError(const std::string& message);

}  // namespace Tool
