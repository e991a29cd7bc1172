// Puts the URI family together: its option, its inputs, its goals.
#include "uri/UriFamily.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <tuple>

#include "Family.h"
#include "Inputs.h"

namespace Bench::Uri {
namespace {

constexpr std::size_t kTextCount = 64;
constexpr std::size_t kMixedSize = 268;
constexpr std::size_t kCleanSize = 256;
// Few enough for the objects of any subject to stay in the cache: printing is measured, not memory.
constexpr std::size_t kPrintedCount = 500;

const std::string kEscapeMixed = "uri/escape mixed";
const std::string kEscapeClean = "uri/escape clean";
const std::string kUnescapeMixed = "uri/unescape mixed";
const std::string kUnescapeClean = "uri/unescape clean";

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
        {kEscapeMixed, 0.65, "Qt"},
        {kEscapeClean, 0.25, kBestPeer},
        {kUnescapeMixed, 0.8, "Qt"},
        {kUnescapeClean, 0.2, kBestPeer},
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

std::vector<std::string> EscapedTexts(const std::vector<std::string>& texts, std::size_t size = std::string::npos) {
    std::vector<std::string> escaped;
    for (const std::string& text : texts) {
        escaped.push_back(Escaped(text, size));
    }
    return escaped;
}

void FillTexts(Inputs& inputs) {
    const std::vector<std::string> mixed = MixedTexts(kTextCount, kMixedSize);
    const std::vector<std::string> clean = CleanTexts(kTextCount, kCleanSize);
    const std::vector<std::string> brief = ShortTexts();
    inputs.escapes = {{kEscapeMixed, mixed}, {kEscapeClean, clean}, {"uri/escape short", brief}};
    inputs.unescapes = {{kUnescapeMixed, EscapedTexts(mixed, kMixedSize)},
                        {kUnescapeClean, clean},
                        {"uri/unescape short", EscapedTexts(brief)}};
}

/// Finds out what each subject refuses, and leaves for printing what none of them does.
void FillPrinted(State& state) {
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
    state.inputs.printed = Spread(common, kPrintedCount);
    state.notes.push_back("URLs: " + std::to_string(state.inputs.urls.size()) + "; refused by: " + refused +
                          ". A refused URL is timed all the same.");
    state.notes.push_back("print: " + std::to_string(state.inputs.printed.size()) + " URLs, taken evenly from the " +
                          std::to_string(common.size()) + " that nobody refuses.");
}

void AddCases() {
    State& state = TheState();
    state.inputs.urls = state.path.empty() ? Lines(kBuiltInUrls) : LinesOfFile(state.path);
    // The order of the columns should not hang on the order in which the program was linked.
    std::sort(Subjects().begin(), Subjects().end(), [](const Subject& a, const Subject& b) {
        const auto rank = [](const Subject& s) { return std::tuple(s.name != kMeasured, s.name != kFloor, s.name); };
        return rank(a) < rank(b);
    });
    FillTexts(state.inputs);
    FillPrinted(state);
    state.notes.emplace_back("Qt is QUrl for parsing and printing, QByteArray for escaping and unescaping.");
    state.notes.emplace_back(
        "escape: each subject escapes by its own rules. Lum keeps bytes from 0x80 and \"/\", \"&\" and the like, which "
        "most peers escape, so that their results are longer.");
    for (const Subject& subject : Subjects()) {
        subject.addCases(subject.name, state.inputs);
    }
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
