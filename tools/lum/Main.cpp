// lum: the library from the command line. Reads the arguments, runs one subcommand and answers with its exit status.
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <numeric>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Display.h"
#include "tools/lum/Host.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Look.h"
#include "tools/lum/Manual.h"

namespace {

/// How many characters have to be put in, taken away or changed to make one word of the other.
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0U);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = std::exchange(row[j + 1], std::min({row[j] + 1, row[j + 1] + 1, changed}));
        }
    }
    return row.back();
}

/// What a word that is no subcommand was meant to be, as a question; "" where nothing is close.
std::string Suggestion(const CLI::App& app, std::string_view word) {
    constexpr std::size_t mostMistakes = 2;
    for (std::size_t mistakes = 1; mistakes <= mostMistakes && mistakes < word.size(); ++mistakes) {
        for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
            if (Distance(word, command->get_name()) <= mistakes) {
                return "; did you mean \"" + command->get_name() + "\"?";
            }
        }
    }
    return {};
}

/// Help whose right column, which begins behind `indent` characters, fits the terminal.
std::string Fitted(const std::string& help, std::size_t indent) {
    std::string fitted;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line); fitted += '\n') {
        std::size_t left = 0;
        if (const std::size_t gap = line.find("  ", 2); line.starts_with("  ") && gap < indent) {
            left = line.find_first_not_of(' ', gap);
        } else if (line.starts_with("  ") && line.size() > indent && line[indent - 1] == ' ') {
            left = indent;
        }
        fitted += line.substr(0, left) + Tool::Indented(std::string_view(line).substr(left), left);
    }
    return fitted;
}

int Run(int argc, char** argv) {
    CLI::App app{"Takes URIs apart and puts them together, and converts texts.", "lum"};
    const std::size_t columns = Tool::TerminalColumns();
    const std::size_t helpIndent = columns > 0 && columns < 80 ? 16 : 30;
    app.get_formatter()->column_width(helpIndent);
    app.set_version_flag("--version", "lum " LUM_VERSION);
    app.require_subcommand(1);
    // Subcommands take the footer over when they are added.
    std::string footer = "Exit status:";
    for (const auto& [status, meaning] : Tool::kExitStatuses) {
        footer += std::string("\n  ") + status + "  " + meaning;
    }
    app.footer(footer);
    app.failure_message([argc, argv](const CLI::App* failed, const CLI::Error& error) {
        const bool isUnknown = failed->get_subcommands().empty() && argc > 1 && argv[1][0] != '-';
        std::string what = isUnknown ? std::string("no subcommand \"") + argv[1] + '"' + Suggestion(*failed, argv[1])
                                     : std::string(error.what());
        // Of an argument that is missing and one that is wrong, the wrong one was typed.
        const std::vector<std::string> unexpected = failed->remaining(true);
        if (!isUnknown && !unexpected.empty() && error.get_name() == "RequiredError") {
            what = CLI::ExtrasError(unexpected).what();
        }
        const auto commands = failed->get_subcommands();
        const std::string command = commands.empty() ? "lum" : "lum " + commands.front()->get_name();
        return "lum: " + Tool::Printable(Tool::WithoutShields(what)) + " (" + command + " --help tells more)\n";
    });

    int status = 0;
    for (const auto add :
         {Tool::AddParse, Tool::AddExplain, Tool::AddGet, Tool::AddEdit, Tool::AddEscape, Tool::AddUnescape,
          Tool::AddResolve, Tool::AddRelative, Tool::AddRelation, Tool::AddParent, Tool::AddName, Tool::AddQuery,
          Tool::AddPath, Tool::AddConvert, Tool::AddEncodings, Tool::AddTime, Tool::AddStrings, Tool::AddGenerate}) {
        add(app, status);
    }
    for (CLI::App* command : app.get_subcommands({})) {
        Tool::AddColor(*command);
    }
    try {
        app.parse(Tool::ShieldedArguments(argc, argv));
        Tool::FlushOutput();
    } catch (const CLI::CallForHelp&) {
        Tool::WriteText(Fitted(app.help(), helpIndent));
        Tool::FlushOutput();
    } catch (const CLI::ParseError& error) {
        const int answer = app.exit(error) == 0 ? EXIT_SUCCESS : 2;
        if (!std::cout.flush()) {
            std::fputs("lum: cannot write standard output\n", stderr);
            return 2;
        }
        return answer;
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        Tool::WriteError(error.what());
        return 2;
    }
}
