// Scripts with which shells complete the tool's command line.
#pragma once

#include <string>

#include <CLI/App.hpp>

namespace Tool {

std::string BashCompletion(const CLI::App& app);
std::string ZshCompletion(const CLI::App& app);
std::string FishCompletion(const CLI::App& app);

}  // namespace Tool
