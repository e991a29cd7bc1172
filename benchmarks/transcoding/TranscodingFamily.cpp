// Puts the transcoding family together: its option, its inputs, its goals.
#include "transcoding/TranscodingFamily.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <tuple>

#include "Family.h"

namespace Bench::Transcoding {
namespace {

struct Size {
    const char* name;
    std::size_t bytes;
    std::size_t count;
};
constexpr Size kSizes[] = {{"100 B", 100, 256}, {"4 KB", 4096, 32}, {"1 MB", 1048576, 1}};

std::string CaseName(const std::string& script, const char* size, const char* direction) {
    return "transcoding/" + script + ' ' + size + ' ' + direction + " UTF-16";
}

std::vector<Goal> Goals() {
    const auto to = [](const char* script, const char* size) { return CaseName(script, size, "to"); };
    std::vector<Goal> goals{
        {to("ascii", "1 MB"), 1.0 / 6, "ICU"},
        {to("ascii", "1 MB"), 2, "Qt"},
        {to("latin", "1 MB"), 1, "Qt"},
        {to("cyrillic", "1 MB"), 1 / 0.6, kBestPeer},
        {CaseName("ascii", "1 MB", "from"), 1.0 / 6, "ICU"},
        {kTwoThreads, 1 / 1.7, kMeasured, Quantity::Time, kOneThread},
    };
    for (const char* script : {"japanese", "chinese", "emoji"}) {
        goals.push_back({to(script, "1 MB"), 1 / 1.15, kBestPeer});
    }
    for (const char* script : {"ascii", "latin", "cyrillic", "arabic", "japanese", "chinese", "emoji"}) {
        goals.push_back({to(script, "100 B"), 0.5, "ICU cached"});
    }
    for (const Script& script : Scripts({})) {
        for (const std::string& encoding : script.encodings) {
            goals.push_back({"transcoding/" + script.name + ' ' + encoding + " to UTF-16", 1.2, "ICU"});
        }
    }
    return goals;
}

struct State {
    std::string folder;
    std::vector<Script> scripts;
    Inputs inputs;
};

State& TheState() {
    static State state;
    return state;
}

void AddCases() {
    State& state = TheState();
    state.scripts = Scripts(state.folder);
    for (const Script& script : state.scripts) {
        for (const Size& size : kSizes) {
            UnicodeCase made{CaseName(script.name, size.name, "to"),
                             CaseName(script.name, size.name, "from"),
                             Slices(script.text, size.bytes, size.count),
                             {}};
            for (const std::string& text : made.narrow) {
                made.wide.push_back(Widened(text));
            }
            state.inputs.unicode.push_back(std::move(made));
        }
        for (const std::string& encoding : script.encodings) {
            state.inputs.encodings.push_back(Encoded(encoding, script.name, script.text));
        }
    }
    std::sort(Subjects().begin(), Subjects().end(), [](const Subject& a, const Subject& b) {
        return std::tuple(a.name != kMeasured, a.name) < std::tuple(b.name != kMeasured, b.name);
    });
    for (const Subject& subject : Subjects()) {
        subject.addCases(subject.name, state.inputs);
    }
    AddGrowth(state.scripts);
}

void AddOptions(CLI::App& app) {
    app.add_option("--texts", TheState().folder,
                   "Folder with the texts to convert, text-latin.utf8.txt and so on (default: made up by rule)");
}

std::vector<std::string> Notes() {
    return {
        "transcoding: sizes are those of the UTF-8 text; what is not named otherwise is from or to UTF-8. Texts "
        "come from all over a script's text and take turns.",
        "ICU is u_strFromUTF8 and u_strToUTF8 into a buffer that is not cleared and, for encodings, an open "
        "converter in pieces of 1024 bytes. \"ICU cached\" is a converter from a map behind a lock, given back "
        "afterwards. iconv is an open converter. Qt is QString, for UTF-8 alone.",
        "into a buffer: Lum is an open StreamConverter, Qt QStringDecoder and QStringEncoder, ICU's converters are "
        "called once for the whole text.",
        "growth: an element is a byte of the text in UTF-8.",
        "threads: the time of the clock on the wall, divided by the calls of all threads."};
}

const AddFamily add{{"transcoding", AddOptions, AddCases, Goals(), Notes}};

}  // namespace

std::vector<Subject>& Subjects() {
    static std::vector<Subject> subjects;
    return subjects;
}

}  // namespace Bench::Transcoding
