// The manual page, and what it and --help say of the exit status.
#pragma once

#include <array>
#include <string>

#include <CLI/App.hpp>

namespace Tool {

struct ExitStatus {
    const char* status;
    const char* meaning;
};
constexpr std::array<ExitStatus, 3> kExitStatuses{{
    {"0", "yes, or done"},
    {"1", "no: a text that is not valid or cannot be converted, or something asked for that is not there"},
    {"2", "wrong usage, or input or output that fails"},
}};

/// The page in the form that man reads.
std::string ManualPage(const CLI::App& app);

}  // namespace Tool
