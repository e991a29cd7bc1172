// The subcommands. Each adds itself to the command line and, when it is the one that is run, writes
// its results to standard output and its answer to `status`.
#pragma once

#include <CLI/App.hpp>

namespace Tool {

void AddParse(CLI::App& app, int& status);
void AddExplain(CLI::App& app, int& status);
void AddGet(CLI::App& app, int& status);
void AddEdit(CLI::App& app, int& status);
void AddEscape(CLI::App& app, int& status);
void AddUnescape(CLI::App& app, int& status);
void AddResolve(CLI::App& app, int& status);
void AddRelative(CLI::App& app, int& status);
void AddRelation(CLI::App& app, int& status);
void AddParent(CLI::App& app, int& status);
void AddName(CLI::App& app, int& status);
void AddQuery(CLI::App& app, int& status);
void AddPath(CLI::App& app, int& status);
void AddConvert(CLI::App& app, int& status);
void AddEncodings(CLI::App& app, int& status);
void AddTime(CLI::App& app, int& status);
void AddStrings(CLI::App& app, int& status);
void AddGenerate(CLI::App& app, int& status);

}  // namespace Tool
