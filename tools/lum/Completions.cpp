// Writes for each shell what follows a subcommand and an option.
#include "tools/lum/Completions.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <Lum/Transcoder.h>
#include <CLI/CLI.hpp>

#include "tools/lum/CommandTree.h"

namespace Tool {
namespace {

std::string Joined(const std::vector<std::string>& words) { return CLI::detail::join(words, " "); }

std::vector<std::string> NamesOf(const std::vector<CommandInfo>& commands) {
    std::vector<std::string> names;
    for (const CommandInfo& command : commands) {
        names.push_back(command.name);
    }
    return names;
}

std::string Encodings() {
    std::vector<std::string> names;
    for (const Lum::EncodingInfo& info : Lum::KnownEncodings()) {
        if (info.isConvertible) {
            names.push_back(info.name);
        }
    }
    std::sort(names.begin(), names.end());
    return Joined(names);
}

/// A text with `escape` before each of `special`.
std::string Escaped(std::string_view text, std::string_view special, std::string_view escape) {
    std::string escaped;
    for (const char c : text) {
        escaped += special.find(c) == std::string_view::npos ? "" : escape;
        escaped += c;
    }
    return escaped;
}

/// Inside single quotes, where bash and zsh know no escape.
std::string InQuotes(std::string_view text) {
    return '\'' + CLI::detail::find_and_replace(std::string(text), "'", "'\\''") + '\'';
}

}  // namespace

std::string BashCompletion(const CLI::App& app) {
    const std::vector<CommandInfo> commands = SubcommandsOf(app);
    std::string values;   // what follows an option
    std::string options;  // the options of a subcommand
    std::string places;   // what an argument may be
    for (const CommandInfo& command : commands) {
        std::vector<std::string> names;
        for (const OptionInfo& option : command.options) {
            std::string pattern;
            for (const std::string& name : option.names) {
                names.push_back(name);
                pattern += (pattern.empty() ? "'" : " | '") + command.name + ' ' + name + '\'';
            }
            if (!option.value.empty()) {
                values += "        " + pattern + ") ";
                values += option.IsFile()       ? "_lum_files"
                          : option.IsEncoding() ? "_lum_words \"$encodings\""
                                                : "_lum_words " + InQuotes(Joined(option.choices));
                values += "; return ;;\n";
            }
        }
        options += "        " + command.name + ") _lum_words " + InQuotes(Joined(names)) + " ;;\n";
        const OptionInfo first = command.arguments.empty() ? OptionInfo() : command.arguments.front();
        if (first.IsFile()) {
            places += "        " + command.name + ") _lum_files ;;\n";
        } else if (!first.choices.empty()) {
            places += "        " + command.name + ") _lum_words " + InQuotes(Joined(first.choices)) + " ;;\n";
        }
    }
    return "# Completes the command line of lum in bash. Made by \"lum generate bash\".\n"
           "_lum_words() { mapfile -t COMPREPLY < <(compgen -W \"$1\" -- \"$word\"); }\n"
           "_lum_files() { compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- \"$word\"); }\n"
           "_lum() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]} subcommand=${COMP_WORDS[1]}\n"
           "    local encodings=" +
           InQuotes("auto-bom " + Encodings()) +
           "\n"
           "    COMPREPLY=()\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        _lum_words " +
           InQuotes(Joined(NamesOf(commands)) + " --help --version") +
           "\n"
           "        return\n"
           "    fi\n"
           "    # The \"=\" of --option=value is a word of its own.\n"
           "    [ \"$word\" != = ] || word=\n"
           "    [ \"$option\" != = ] || option=${COMP_WORDS[COMP_CWORD - 2]}\n"
           "    case \"$subcommand $option\" in\n" +
           values +
           "    esac\n"
           "    case $word in\n"
           "        -*) case $subcommand in\n" +
           options +
           "        esac ;;\n"
           "        *) case $subcommand in\n" +
           places +
           "        esac ;;\n"
           "    esac\n"
           "}\n"
           "complete -F _lum lum\n";
}

std::string ZshCompletion(const CLI::App& app) {
    const auto action = [](const OptionInfo& option) -> std::string {
        if (option.IsFile()) {
            return "_files";
        }
        return option.IsEncoding()       ? "{compadd -a encodings}"
               : !option.choices.empty() ? '(' + Joined(option.choices) + ')'
                                         : " ";
    };
    std::string described;
    std::string cases;
    for (const CommandInfo& command : SubcommandsOf(app)) {
        described += "        " + InQuotes(Escaped(command.name, ":", "\\") + ':' + command.help) + '\n';
        cases += "        " + command.name + ") _arguments -s -S";
        for (const OptionInfo& option : command.options) {
            const std::string help = '[' + Escaped(option.help, "[]\\", "\\") + ']';
            const std::string value =
                option.value.empty() ? "" : ':' + Escaped(option.value, ":\\", "\\") + ':' + action(option);
            for (const std::string& name : option.names) {
                // A value may follow "=" or be the next word.
                const bool takesEquals = !value.empty() && name.starts_with("--");
                cases += " \\\n            " + InQuotes('*' + name + (takesEquals ? "=" : "") + help + value);
            }
        }
        for (const OptionInfo& argument : command.arguments) {
            const bool isMany = argument.value.find("...") != std::string::npos;
            // A text of one's own: a message about it would keep what is begun from being completed as an option.
            const std::string values = action(argument) == " " ? "{true}" : action(argument);
            cases += " \\\n            " +
                     InQuotes((isMany ? "*:" : ":") + Escaped(argument.value, ":\\", "\\") + ':' + values);
        }
        cases += " ;;\n";
    }
    return "#compdef lum\n"
           "# Completes the command line of lum in zsh. Made by \"lum generate zsh\".\n"
           "_lum() {\n"
           "    local curcontext=$curcontext state line\n"
           "    local -a encodings subcommands\n"
           "    encodings=(auto-bom " +
           Encodings() +
           ")\n"
           "    subcommands=(\n" +
           described +
           "    )\n"
           "    _arguments -C '(- *)'{-h,--help}'[Print the help]' '(- *)--version[Print the version]' \\\n"
           "        '1:subcommand:->subcommand' '*::argument:->argument'\n"
           "    if [[ $state = subcommand ]]; then\n"
           "        _describe subcommand subcommands\n"
           "        return\n"
           "    fi\n"
           "    case $line[1] in\n" +
           cases +
           "    esac\n"
           "}\n"
           "if [[ $funcstack[1] = _lum ]]; then\n"
           "    _lum \"$@\"\n"
           "else\n"
           "    compdef _lum lum\n"
           "fi\n";
}

std::string FishCompletion(const CLI::App& app) {
    const auto quoted = [](const std::string& text) { return '\'' + Escaped(text, "'\\", "\\") + '\''; };
    std::string script =
        "# Completes the command line of lum in fish. Made by \"lum generate fish\".\n"
        "set -l encodings auto-bom " +
        Encodings() +
        "\n"
        "complete -c lum -f\n"
        "complete -c lum -n __fish_use_subcommand -s h -l help -d 'Print the help'\n"
        "complete -c lum -n __fish_use_subcommand -l version -d 'Print the version'\n";
    for (const CommandInfo& command : SubcommandsOf(app)) {
        script += "complete -c lum -n __fish_use_subcommand -a " + command.name + " -d " + quoted(command.help) + '\n';
        const std::string here = "complete -c lum -n 'contains -- " + command.name + " (commandline -opc)[2]'";
        const auto values = [&](const OptionInfo& option) -> std::string {
            return option.IsFile()         ? " -r -F"
                   : option.IsEncoding()   ? " -x -a \"$encodings\""
                   : !option.value.empty() ? " -x -a " + quoted(Joined(option.choices))
                                           : "";
        };
        for (const OptionInfo& option : command.options) {
            script += here;
            for (const std::string& name : option.names) {
                script += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            }
            script += values(option) + " -d " + quoted(option.help) + '\n';
        }
        for (const OptionInfo& argument : command.arguments) {
            if (argument.IsFile()) {
                script += here + " -F\n";
            } else if (!argument.choices.empty()) {
                script += here + " -a " + quoted(Joined(argument.choices)) + '\n';
            }
        }
    }
    return script;
}

}  // namespace Tool
