// The command line as data: what the manual page and the completions are made of, read from the definitions that the
// parser and --help use.
#pragma once

#include <string>
#include <vector>

#include <CLI/App.hpp>

namespace Tool {

struct OptionInfo {
    std::vector<std::string> names;  ///< With their dashes; none of an argument that has only a place.
    std::string value;               ///< What stands for the value: "ENC"; "" for a flag.
    std::vector<std::string> choices;
    std::string help;

    /// Whether the value is the name of a file or folder, or that of an encoding.
    [[nodiscard]] bool IsFile() const {
        return value.starts_with("FILE") || value.starts_with("[FILE") || value.starts_with("DIR");
    }
    [[nodiscard]] bool IsEncoding() const { return value == "ENC"; }
    bool operator==(const OptionInfo&) const = default;
};

struct CommandInfo {
    std::string name;
    std::string help;
    std::vector<OptionInfo> options;
    std::vector<OptionInfo> arguments;
};

/// The command itself, without its subcommands.
CommandInfo InfoOf(const CLI::App& command);
/// Its subcommands, in the order of the help.
std::vector<CommandInfo> SubcommandsOf(const CLI::App& app);

}  // namespace Tool
