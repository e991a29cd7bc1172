// Writes the manual page in the man macros.
#include "tools/lum/Manual.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/lum/CommandTree.h"

namespace Tool {
namespace {

struct Entry {
    const char* what;
    const char* text;
};
constexpr std::array<Entry, 3> kEnvironment{{
    {"NO_COLOR", "If it is set and not empty, tables have no colors, unless --color=always asks for them."},
    {"COLUMNS", "How wide tables may be on a terminal. Without it, as wide as the terminal is."},
    {"LC_ALL, LC_MESSAGES, LANG", "In which language lum strings looks numbers up."},
}};
constexpr std::array<Entry, 5> kExamples{{
    {"lum parse 'ftp://me@example.org/a%20b'", "Show what is in a URI."},
    {"lum get host <urls.txt | sort | uniq -c", "Count the hosts of a list."},
    {"find \"$PWD\" -type f -print0 | lum path --from unix -0 | xargs -0 -n1 echo",
     "Make URIs of file names, whatever they hold."},
    {"parallel --pipepart -a urls.txt --block -1 'lum parse --json >urls.{#}.json'",
     "Use every processor for a long list."},
    {"lum convert --from shift_jis --to utf-8 --in-place *.txt", "Convert files, each as a whole or not at all."},
}};

/// A text as roff shows it: no line begins with a control character, and hyphens can be copied.
std::string Roff(std::string_view text) {
    std::string roff = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (const char c : text) {
        switch (c) {
            case '\\':
                roff += "\\e";
                break;
            case '-':
                roff += "\\-";
                break;
            case '\'':
                roff += "\\(aq";
                break;
            case '~':
                roff += "\\(ti";
                break;
            case '^':
                roff += "\\(ha";
                break;
            default:
                roff += c;
        }
    }
    return roff;
}

std::string Bold(std::string_view text) { return "\\fB" + Roff(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + Roff(text) + "\\fR"; }

std::string Described(const std::string& head, std::string_view text) {
    return ".TP\n" + head + '\n' + Roff(text) + '\n';
}

std::string Described(const OptionInfo& option) {
    std::string head;
    for (const std::string& name : option.names) {
        head += (head.empty() ? "" : ", ") + Bold(name);
    }
    if (!option.value.empty()) {
        head += (head.empty() ? "" : " ") + Italic(option.value);
    }
    std::string help = option.help;
    for (const std::string& choice : option.choices) {
        help += (&choice == &option.choices.front() ? ": " : ", ") + choice;
    }
    return Described(head, help);
}

/// Whether every subcommand has it, so that it is said once.
bool IsCommon(const OptionInfo& option, const std::vector<CommandInfo>& commands) {
    return std::all_of(commands.begin(), commands.end(), [&](const CommandInfo& command) {
        return std::find(command.options.begin(), command.options.end(), option) != command.options.end();
    });
}

std::string Described(const CommandInfo& command, const std::vector<CommandInfo>& commands) {
    std::string usage = Bold("lum " + command.name) + " [" + Italic("OPTIONS") + ']';
    std::string details;
    for (const OptionInfo& argument : command.arguments) {
        usage += ' ' + Italic(argument.value);
        details += Described(argument);
    }
    for (const OptionInfo& option : command.options) {
        details += IsCommon(option, commands) ? "" : Described(option);
    }
    return ".SS " + Roff(command.name) + '\n' + usage + "\n.PP\n" + Roff(command.help) + ".\n" + details;
}

}  // namespace

std::string ManualPage(const CLI::App& app) {
    const std::vector<CommandInfo> commands = SubcommandsOf(app);
    std::string page =
        ".TH LUM 1 \"\" \"lum " LUM_VERSION "\" \"User Commands\"\n.SH NAME\nlum \\- " +
        Roff("take URIs apart and put them together, and convert texts") + "\n.SH SYNOPSIS\n" + Bold("lum") + ' ' +
        Italic("SUBCOMMAND") + " [" + Italic("OPTIONS") + "] [" + Italic("ARGUMENTS") + "]\n.SH DESCRIPTION\n" +
        Roff(app.get_description()) + '\n' +
        Roff(
            "A subcommand that takes texts as arguments reads the lines of standard input where it is "
            "given none, and answers each before it waits for the next. In tables, what a terminal would "
            "act on is shown as \\xNN. Put \"--\" before a text that begins with \"-\".") +
        "\n.SH OPTIONS\nEvery subcommand takes these.\n";
    for (const OptionInfo& option : commands.front().options) {
        page += IsCommon(option, commands) ? Described(option) : "";
    }
    page += Described(Bold("--version"), "Without a subcommand: print the version.");
    page += ".SH SUBCOMMANDS\n";
    for (const CommandInfo& command : commands) {
        page += Described(command, commands);
    }
    page += ".SH \"EXIT STATUS\"\n";
    for (const auto& [status, meaning] : kExitStatuses) {
        page += Described(Bold(status), meaning);
    }
    page += ".SH ENVIRONMENT\n";
    for (const auto& [name, meaning] : kEnvironment) {
        page += Described(Bold(name), meaning);
    }
    page += ".SH EXAMPLES\n";
    for (const auto& [line, meaning] : kExamples) {
        page += Described(Bold(line), meaning);
    }
    return page;
}

}  // namespace Tool
