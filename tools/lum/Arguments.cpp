// Puts the shield on and takes it off.
#include "tools/lum/Arguments.h"

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
    for (int i = argc - 1; i > 0; --i) {
        std::string argument = argv[i];
        if (argument.starts_with('[') || argument.starts_with(kShield)) {
            argument.insert(0, 1, kShield);
        }
        arguments.push_back(std::move(argument));
    }
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
