// The cases of the family of 16-bit strings, what they work on, and the subjects that have them.
//
// Every subject is given text in its own type and gives back its own. A buffer of Lum's goes back to
// its pool only if it is locked when it goes; the rows named "locked" lock each string just before,
// within the clock, and are those that goals are set for. The rows named "kept" do not lock, run a
// fixed number of times and tell the bytes kept.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Bench::Strings {

inline const std::string kLocked = " locked";
inline const std::string kKept = " kept";

inline const std::string kAppendUnits = "strings/append a unit to 1,000";
inline const std::string kAppendShort = "strings/append 16 units to 4,096";
inline const std::string kAppendLong = "strings/append 16 units to 65,536";
inline const std::string kMidOf5 = "strings/Mid of 5";
inline const std::string kMid = "strings/Mid of 50";
inline const std::string kCase = "strings/upper, then lower, 1,000";
inline const std::string kEqual = "strings/equal, 1,000";
inline const std::string kCompare = "strings/compare, 1,000";
inline const std::string kTokenise = "strings/tokenise 1 MB, a token";
inline const std::string kFormat = "strings/format %d %s %f";

/// What the inputs are kept in, to be turned into each subject's own type.
using Units = std::u16string;

/// Texts of one size.
struct TextCase {
    std::string constructName;  ///< "family/case"
    std::string copyName;       ///< "family/case", or empty where the size is not copied.
    std::vector<Units> texts;
};

/// A text that ends with what is searched, and holds it nowhere else.
struct Search {
    Units text;
    Units wanted;
};

struct SearchCase {
    std::string name;  ///< "family/case"
    std::vector<Search> searches;
};

/// Texts in which every `from` is replaced.
struct ReplaceCase {
    std::string name;  ///< "family/case"
    std::vector<Units> texts;
    Units from;
    Units to;
};

/// The arguments of "%d %s %f", the text in both widths.
struct FormatArguments {
    int number;
    std::string narrow;
    Units wide;
    double fraction;
};

struct Inputs {
    std::vector<TextCase> sizes;
    std::vector<TextCase> held;  ///< Named by constructName.
    std::vector<SearchCase> searches;
    std::vector<ReplaceCase> replacements;
    std::vector<Units> thousands;  ///< Texts of 1,000 ASCII units.
    std::vector<Units> lists;      ///< 1 MB of words with a comma between them.
    std::vector<FormatArguments> formats;
};

[[nodiscard]] Inputs MakeInputs();

struct Subject {
    std::string name;
    /// Registers the subject's cases under `name`; `inputs` outlives them.
    void (*addCases)(const std::string& name, const Inputs& inputs);
};

std::vector<Subject>& Subjects();

/// Adds a subject from a file of its own, ahead of main.
struct AddSubject {
    explicit AddSubject(Subject subject) { Subjects().push_back(std::move(subject)); }
};

/// Registers the growth table's operations.
void AddGrowth();
void AddTextGrowth();
void AddWorstGrowth();

}  // namespace Bench::Strings
