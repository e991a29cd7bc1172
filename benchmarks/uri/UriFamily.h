// The cases of the URI family, what they work on, and the subjects that have them.
//
// Every peer is given text in its own string type and gives back its own, so that no conversion is
// charged to it, and is called as its users call it. A peer that cannot reuse an object is measured
// with fresh ones there; a floor does the least that the result can cost.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Bench::Uri {

inline const std::string kParseFresh = "uri/parse fresh";
inline const std::string kParseOneStep = "uri/parse one step";
inline const std::string kParseReused = "uri/parse reused";
inline const std::string kPrint = "uri/print";
inline const std::string kCopy = "uri/copy";
inline const std::string kHold = "uri/hold a URL";
inline const std::string kEqual = "uri/compare equal";
inline const std::string kMakeRelative = "uri/make relative";
inline const std::string kQueryToMap = "uri/query to map";
inline const std::string kSetQueryKey = "uri/query set key";
inline const std::string kNameAndExtension = "uri/name and extension";
inline const std::string kRelation = "uri/relation";

/// Few enough for the objects of any subject to stay in the cache: the calls are measured, not memory.
inline constexpr std::size_t kCachedCount = 500;

/// A case that turns one text into another.
struct TextCase {
    std::string name;  ///< "family/case"
    std::vector<std::string> texts;
};

/// References, and the base that each of them is resolved against.
struct ResolveCase {
    std::string freshName;     ///< "family/case": every result is an object of its own.
    std::string reusedName;    ///< "family/case": one object takes all results, the base copied to it first.
    std::string absoluteName;  ///< "family/case": a parsed reference is made absolute, with its parsing.
    std::string base;
    std::vector<std::string> references;
};

/// A URL, and another of the same site that a reference is to lead to.
struct Neighbours {
    std::string base;
    std::string target;
};

using QueryPair = std::pair<std::string, std::string>;

/// A URL with a query of ten pairs, and those pairs unescaped and in their order.
struct QueryText {
    std::string url;
    std::vector<QueryPair> pairs;
};

/// What the last segment of a path gives, in the subject's type.
template <class Text>
struct LastName {
    Text name;
    Text extension;
};

struct Inputs {
    std::vector<std::string> urls;
    /// Some of the URLs, all of which every subject accepts: what printing and naming start from.
    std::vector<std::string> accepted;
    std::vector<TextCase> escapes;
    std::vector<TextCase> unescapes;
    /// Every ASCII character but letters, digits and "-._~" is to be escaped, by a set given with each call.
    std::vector<TextCase> setEscapes;
    std::vector<Neighbours> neighbours;
    std::vector<ResolveCase> resolves;
    std::vector<QueryText> queries;
    /// What the first query's keys are set to, one after the other.
    std::vector<QueryPair> changes;
};

struct Subject {
    std::string name;
    /// Whether the subject takes this text for a URI; null where it does not read the text.
    bool (*accepts)(const std::string& text);
    /// The reference resolved and printed, nothing where it is refused; null where the subject
    /// resolves none.
    std::optional<std::string> (*resolved)(const std::string& base, const std::string& reference);
    /// Registers the subject's cases under `name`; `inputs` outlives them.
    void (*addCases)(const std::string& name, const Inputs& inputs);
};

std::vector<Subject>& Subjects();

/// Adds a subject from a file of its own, ahead of main.
struct AddSubject {
    explicit AddSubject(Subject subject) { Subjects().push_back(std::move(subject)); }
};

/// The list used where none is given, a URL a line.
extern const char* const kBuiltInUrls;

/// What is escaped where a set is given.
extern const char* const kEscapedSet;

[[nodiscard]] std::vector<TextCase> EscapeCases();
[[nodiscard]] std::vector<TextCase> SetEscapeCases();
/// Of each URL, one that is some segments up and down from it, by rule.
[[nodiscard]] std::vector<Neighbours> NeighboursOf(const std::vector<std::string>& urls);
[[nodiscard]] std::vector<TextCase> UnescapeCases();
[[nodiscard]] std::vector<ResolveCase> ResolveCases();
[[nodiscard]] std::vector<QueryText> QueryTexts();
/// One pair for each key of `query`, several times over, with other values each time.
[[nodiscard]] std::vector<QueryPair> Changes(const QueryText& query);

/// Registers the growth table's operations.
void AddGrowth();
void AddTextGrowth();
void AddWorstGrowth();

}  // namespace Bench::Uri
