// How results are shown: a table for a reader, JSON for a program.
#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "Family.h"
#include "Results.h"

namespace Bench {

/// Prints one family: a row a case, the measured subject first, then each other one with its time and
/// the ratio to it; goals stand at the end of the row. Says nothing where `cases` is empty.
void PrintTable(std::ostream& out, const Family& family, const std::vector<CaseResult>& cases,
                const std::vector<std::string>& names);

/// Prints what has to be known about the family's inputs.
void PrintNotes(std::ostream& out, const Family& family);

/// Prints what holds for every table.
void PrintFootnote(std::ostream& out);

/// The figures of both tables, unrounded.
[[nodiscard]] nlohmann::json ToJson(const Family& family, const std::vector<CaseResult>& cases,
                                    const std::vector<CaseResult>& growth);

}  // namespace Bench
