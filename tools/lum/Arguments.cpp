// Puts the shield on and takes it off.
#include "tools/lum/Arguments.h"

#include <algorithm>
#include <utility>

#include <CLI/CLI.hpp>

namespace Tool {
namespace {

constexpr char kShield = '\x1A';

CLI::Option* WithoutShield(CLI::Option* option) {
    // A validator may change the text; what it returns would be a complaint.
    const auto takeOff = [](std::string& text) -> std::string {
        if (text.starts_with(kShield)) {
            text.erase(0, 1);
        }
        return {};
    };
    return option->transform(CLI::Validator(takeOff, "", "shield"));
}

}  // namespace

std::vector<std::string> ShieldedArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    const auto add = [&arguments](std::string argument) {
        if (argument.starts_with('[') || argument.starts_with(kShield)) {
            argument.insert(0, 1, kShield);
        }
        arguments.push_back(std::move(argument));
    };
    bool areOptions = true;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        areOptions = areOptions && argument != "--";
        const std::size_t equals = areOptions && argument.starts_with("--") ? argument.find('=') : std::string::npos;
        const std::string value = equals == std::string::npos ? "" : argument.substr(equals + 1);
        // CLI11 would take the next argument for a value that is empty.
        if (equals != std::string::npos && (value.empty() || value.starts_with('['))) {
            add(argument.substr(0, equals));
            add(value);
        } else {
            add(argument);
        }
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

std::string WithoutShields(std::string message) {
    std::erase(message, kShield);
    return message;
}

CLI::Option* AddText(CLI::App& command, const std::string& name, std::string& text, const std::string& help) {
    return WithoutShield(command.add_option(name, text, help));
}

CLI::Option* AddTexts(CLI::App& command, const std::string& name, std::vector<std::string>& texts,
                      const std::string& help) {
    return WithoutShield(command.add_option(name, texts, help));
}

std::string CheckPair(const std::string& pair) {
    return pair.find('=') == std::string::npos ? "no \"=\" in \"" + pair + '"' : std::string();
}

}  // namespace Tool
