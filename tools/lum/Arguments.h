// Texts as arguments, exactly as they were given.
//
// CLI11 reads an argument in square brackets as a list, which would turn "[::1]" into "::1". Such
// arguments are therefore shielded before it sees them, and the shield is taken off each text again.
#pragma once

#include <string>
#include <vector>

#include <CLI/App.hpp>

namespace Tool {

/// The arguments behind the program's name, shielded, last one first as CLI11 takes them.
std::vector<std::string> ShieldedArguments(int argc, const char* const* argv);

/// A message that may hold shielded texts, without shields.
std::string WithoutShields(std::string message);

/// Adds a text, positional or as an option's value.
CLI::Option* AddText(CLI::App& command, const std::string& name, std::string& text, const std::string& help);

/// Adds any number of texts.
CLI::Option* AddTexts(CLI::App& command, const std::string& name, std::vector<std::string>& texts,
                      const std::string& help);

/// What is wrong with a text that has to be KEY=VALUE; "" for a good one.
std::string CheckPair(const std::string& pair);

}  // namespace Tool
