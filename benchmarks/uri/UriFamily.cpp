// Puts the URI family together: its option, its inputs, its goals.
#include "uri/UriFamily.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <tuple>

#include "Family.h"
#include "Inputs.h"

namespace Bench::Uri {
namespace {

const std::vector<Goal>& Goals() {
    static const std::vector<Goal> goals{
        {kParseFresh, 0.33, "POCO"},
        {kParseFresh, 0.25, "uriparser"},
        {kParseFresh, 0.25, "Boost.URL"},
        {kParseFresh, 0.25, "Qt"},
        {kParseFresh, 1, kFloor, Quantity::Allocations},
        {kParseReused, 0.25, "POCO"},
        {kParseReused, 0.25, "uriparser"},
        {kParseReused, 0.25, "Boost.URL"},
        {kParseReused, 0.25, "Qt"},
        {kParseReused, 0, kNobody, Quantity::Allocations},
        {kPrint, 0.8, "uriparser"},
        {"uri/escape mixed", 0.65, "Qt"},
        {"uri/escape clean", 0.25, kBestPeer},
        {"uri/unescape mixed", 0.8, "Qt"},
        {"uri/unescape clean", 0.2, kBestPeer},
        {"uri/resolve appendix C", 0.6, "uriparser"},
        {"uri/resolve appendix C", 0.6, "Qt"},
        {"uri/resolve page references", 0.6, "uriparser"},
        {"uri/resolve page references", 0.6, "Qt"},
        {kQueryToMap, 0.8, "POCO"},
        {kSetQueryKey, 0.75, "POCO"},
        {kNameAndExtension, 0.5, "std::filesystem"},
        {kRelation, 0.2, kMeasured, Quantity::Time, kParseFresh},
    };
    return goals;
}

struct State {
    std::string path;
    Inputs inputs;
    std::vector<std::string> notes;
};

State& TheState() {
    static State state;
    return state;
}

/// Finds out what each subject refuses, and keeps some of what none of them does.
void FillAccepted(State& state) {
    std::vector<std::string> common = state.inputs.urls;
    std::string refused;
    for (const Subject& subject : Subjects()) {
        if (subject.accepts == nullptr) {
            continue;
        }
        const auto refuses = [&](const std::string& url) { return !subject.accepts(url); };
        const auto& urls = state.inputs.urls;
        refused += (refused.empty() ? "" : ", ") + subject.name + " " +
                   std::to_string(std::count_if(urls.begin(), urls.end(), refuses));
        std::erase_if(common, refuses);
    }
    if (common.empty()) {
        throw std::runtime_error("no URL of the list is accepted by every subject");
    }
    state.inputs.accepted = Spread(common, kCachedCount);
    state.notes.push_back("URLs: " + std::to_string(state.inputs.urls.size()) + "; refused by: " + refused +
                          ". A refused URL is timed all the same.");
    state.notes.push_back("print, copy, compare, name and extension: " + std::to_string(state.inputs.accepted.size()) +
                          " URLs, taken evenly from the " + std::to_string(common.size()) + " that nobody refuses.");
}

/// Tells how many references each subject refuses, and how many it resolves to another text than the
/// measured one, the first in the list.
std::string Note(const ResolveCase& c) {
    std::vector<std::optional<std::string>> expected;
    std::string refusals;
    std::string differences;
    for (const Subject& subject : Subjects()) {
        if (subject.resolved == nullptr) {
            continue;
        }
        std::vector<std::optional<std::string>> results;
        for (const std::string& reference : c.references) {
            results.push_back(subject.resolved(c.base, reference));
        }
        const auto refused = std::count(results.begin(), results.end(), std::nullopt);
        refusals += (refusals.empty() ? "" : ", ") + subject.name + " " + std::to_string(refused);
        if (subject.name == kMeasured) {
            expected = results;
            continue;
        }
        int different = 0;
        for (std::size_t i = 0; i < results.size(); ++i) {
            different += results[i] && expected[i] && results[i] != expected[i] ? 1 : 0;
        }
        differences += (differences.empty() ? "" : ", ") + subject.name + " " + std::to_string(different);
    }
    return c.freshName + ": " + std::to_string(c.references.size()) + " references; refused by: " + refusals +
           "; resolved otherwise than by " + kMeasured + ": " + differences + ". All are timed all the same.";
}

void AddCases() {
    State& state = TheState();
    state.inputs.urls = state.path.empty() ? Lines(kBuiltInUrls) : LinesOfFile(state.path);
    // The order of the columns should not hang on the order in which the program was linked.
    std::sort(Subjects().begin(), Subjects().end(), [](const Subject& a, const Subject& b) {
        const auto rank = [](const Subject& s) { return std::tuple(s.name != kMeasured, s.name != kFloor, s.name); };
        return rank(a) < rank(b);
    });
    state.inputs.escapes = EscapeCases();
    state.inputs.unescapes = UnescapeCases();
    state.inputs.setEscapes = SetEscapeCases();
    state.inputs.resolves = ResolveCases();
    state.inputs.queries = QueryTexts();
    state.inputs.changes = Changes(state.inputs.queries.front());
    FillAccepted(state);
    state.inputs.neighbours = NeighboursOf(state.inputs.accepted);
    state.notes.emplace_back("Qt is QUrl for parsing and printing, QByteArray for escaping and unescaping.");
    state.notes.emplace_back(
        "escape: each subject escapes by its own rules. Lum keeps bytes from 0x80 and \"/\", \"&\" and the like, which "
        "most peers escape, so that their results are longer.");
    state.notes.emplace_back(
        "copy: QUrl copies only a pointer. make relative: uriparser's result are views of both texts.");
    for (const ResolveCase& c : state.inputs.resolves) {
        state.notes.push_back(Note(c));
    }
    state.notes.emplace_back(
        "query to map: Qt keeps \"+\"; POCO, Qt and uriparser give a list of pairs, the others a map.");
    state.notes.emplace_back(
        "query set key: POCO and Qt take the query apart and write it anew, as Lum does; Boost.URL edits it in place.");
    state.notes.emplace_back("relation: URLs of the list with the next one, up to " + std::to_string(kCachedCount) +
                             " pairs; a tenth of parsing the two. Most differ in the host; \"same site\" is of "
                             "those that do not.");
    state.notes.emplace_back(
        "growth: an element is a path segment, a query pair or a byte of text. A std::map costs the logarithm of its "
        "size for each of "
        "them, and more where it outgrows a cache: see the row that only fills one.");
    for (const Subject& subject : Subjects()) {
        subject.addCases(subject.name, state.inputs);
    }
    AddGrowth();
    AddTextGrowth();
    AddWorstGrowth();
}

void AddOptions(CLI::App& app) {
    app.add_option("--urls", TheState().path,
                   "File with the URLs to parse and print, one a line (default: a built-in list)");
}

const AddFamily add{{"uri", AddOptions, AddCases, Goals(), [] { return TheState().notes; }}};

}  // namespace

std::vector<Subject>& Subjects() {
    static std::vector<Subject> subjects;
    return subjects;
}

}  // namespace Bench::Uri
