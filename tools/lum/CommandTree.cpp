// Reads what CLI11 knows of each option.
#include "tools/lum/CommandTree.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace Tool {
namespace {

/// The words in the braces of "TEXT:{win,unix,mac}".
std::vector<std::string> ChoicesIn(const std::string& type) {
    const std::size_t begin = type.find('{');
    const std::size_t end = type.find('}');
    return begin == std::string::npos || end == std::string::npos
               ? std::vector<std::string>()
               : CLI::detail::split(type.substr(begin + 1, end - begin - 1), ',');
}

OptionInfo InfoOf(const CLI::Option& option) {
    OptionInfo info;
    for (const std::string& name : option.get_snames()) {
        info.names.push_back('-' + name);
    }
    for (const std::string& name : option.get_lnames()) {
        info.names.push_back("--" + name);
    }
    info.choices = ChoicesIn(option.get_type_name());
    info.help = option.get_description();
    if (info.names.empty()) {
        const std::string name = option.get_name();
        const bool isMany = option.get_items_expected_max() > 1;
        info.value = (option.get_required() ? name : '[' + name + ']') + (isMany ? "..." : "");
        info.value += option.get_option_text().starts_with("...") ? option.get_option_text().substr(3) : "";
    } else if (option.get_items_expected_min() > 0) {
        const std::string& text = option.get_option_text();
        info.value = text.empty() ? "WORD" : text.substr(0, text.find(" REQUIRED"));
    }
    return info;
}

void Collect(const CLI::App& app, CommandInfo& command) {
    for (const CLI::Option* option : app.get_options()) {
        (option->nonpositional() ? command.options : command.arguments).push_back(InfoOf(*option));
    }
    // Groups of options are subcommands without a name.
    for (const CLI::App* group : app.get_subcommands([](const CLI::App* sub) { return sub->get_name().empty(); })) {
        Collect(*group, command);
    }
}

}  // namespace

CommandInfo InfoOf(const CLI::App& command) {
    CommandInfo info{command.get_name(), command.get_description(), {}, {}};
    Collect(command, info);
    return info;
}

std::vector<CommandInfo> SubcommandsOf(const CLI::App& app) {
    std::vector<CommandInfo> commands;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App* sub) { return !sub->get_name().empty(); })) {
        commands.push_back(InfoOf(*command));
    }
    return commands;
}

}  // namespace Tool
