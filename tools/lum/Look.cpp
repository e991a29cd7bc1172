// Decides about colours once, and wraps lines.
#include "tools/lum/Look.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Display.h"
#include "tools/lum/Host.h"

namespace Tool {
namespace {

bool IsColoredByItself() {
    const char* const unwanted = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return (unwanted == nullptr || *unwanted == '\0') &&
           (terminal == nullptr || std::string_view(terminal) != "dumb") && isatty(STDOUT_FILENO) != 0;
}

bool& IsColored() {
    static bool isColored = IsColoredByItself();
    return isColored;
}

std::size_t TableColumns() {
    static const std::size_t columns = TerminalColumns();
    return columns;
}

}  // namespace

void AddColor(CLI::App& command) {
    command.add_option("--color", "Color tables; auto: on a terminal, where NO_COLOR is not set")
        ->type_name("TEXT")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->each(
            [](const std::string& when) { IsColored() = when == "always" || (when == "auto" && IsColoredByItself()); });
}

std::string Colored(Piece piece, std::string text) {
    if (!IsColored() || text.empty()) {
        return text;
    }
    constexpr std::string_view end = "\033[0m";
    switch (piece) {
        case Piece::kSubject:
            return text.insert(0, "\033[1m").append(end);
        case Piece::kName:
            return text.insert(0, "\033[36m").append(end);
        case Piece::kGood:
            return text.insert(0, "\033[32m").append(end);
        case Piece::kBad:
            return text.insert(0, "\033[1;31m").append(end);
    }
    return text;
}

std::vector<std::string_view> Wrapped(std::string_view printable, std::size_t columns, bool atBlanks) {
    std::vector<std::string_view> lines;
    for (;;) {
        const std::size_t size = columns == 0 ? printable.size() : SizeOfColumns(printable, columns);
        std::size_t end = size;
        std::size_t next = size;
        if (const std::size_t blank = printable.rfind(' ', size);
            atBlanks && size < printable.size() && blank != std::string_view::npos && blank > 0) {
            end = blank;
            next = blank + 1;
        }
        lines.push_back(printable.substr(0, end));
        printable.remove_prefix(next);
        if (printable.empty()) {
            return lines;
        }
    }
}

std::string Indented(std::string_view printable, std::size_t indent) {
    constexpr std::size_t fewest = 10;
    const std::size_t columns = TableColumns();
    std::string text;
    for (const std::string_view line : Wrapped(printable, columns < indent + fewest ? 0 : columns - indent)) {
        text += text.empty() ? "" : '\n' + std::string(indent, ' ');
        text += line;
    }
    return text;
}

std::string Subject(std::string_view text) { return Colored(Piece::kSubject, Printable(text)) + '\n'; }

std::string Marked(std::string_view text, std::size_t offset, std::size_t length) {
    const std::string printable = Printable(text);
    std::size_t before = Columns(Printable(text.substr(0, offset)));
    std::size_t marks = std::max<std::size_t>(Columns(Printable(text.substr(offset, length))), 1);
    const std::vector<std::string_view> lines = Wrapped(printable, TableColumns(), false);
    std::string marked;
    for (const std::string_view& line : lines) {
        marked += Colored(Piece::kSubject, std::string(line)) + '\n';
        const std::size_t columns = Columns(line);
        const std::size_t blanks = std::min(before, columns);
        // A mark may stand behind the end of the text.
        const std::size_t here = &line == &lines.back() ? marks : std::min(marks, columns - blanks);
        if (here > 0) {
            marked += std::string(blanks, ' ') + Colored(Piece::kBad, std::string(here, '^')) + '\n';
        }
        before -= blanks;
        marks -= here;
    }
    return marked;
}

}  // namespace Tool
