// Puts the family of 16-bit strings together: its inputs, its goals, its notes.
#include "strings/StringsFamily.h"

#include <algorithm>
#include <string>
#include <tuple>

#include "Family.h"

namespace Bench::Strings {
namespace {

std::vector<Goal> Goals() {
    std::vector<Goal> goals{
        {"strings/construct 10" + kLocked, 0.4, kBestPeer},
        {"strings/construct 100" + kLocked, 0.4, kBestPeer},
        {"strings/construct 1,000" + kLocked, 1.05, kBestPeer},
        {"strings/copy 10", 0.3, kBestPeer},
        {"strings/copy 100", 0.3, kBestPeer},
        {"strings/copy 1,000", 0.3, kBestPeer},
        {"strings/replace all in 2,048" + kLocked, 0.6, kBestPeer},
        {"strings/replace all in 65,536" + kLocked, 0.4, kBestPeer},
        {kMid + kLocked, 0.35, kBestPeer},
        {kCase, 0.33, "std::u16string"},
        {kEqual, 1.05, "UnicodeString"},
        {kTokenise + kLocked, 0.7, kBestPeer},
        {kFormat + kLocked, 0.5, "std::u16string"},
    };
    for (const std::string size : {"4 KB", "1 MB"}) {
        goals.push_back({"strings/find a word in " + size, 0.3, kBestPeer});
        goals.push_back({"strings/find near misses in " + size, 0.3, kBestPeer});
        goals.push_back({"strings/find common letters in " + size, 0.25, kBestPeer});
        goals.push_back({"strings/find a unit in " + size, 0.6, kBestPeer});
    }
    return goals;
}

std::vector<std::string> Notes() {
    return {
        "locked: CString::LockBuffer is called just before a string goes, inside the clock, for only then its buffer "
        "goes back to where it came from. kept: nothing is locked, a fixed small number of times.",
        "append: a CString above 512 units grows to the exact length each time, by design, so that appending copies "
        "the whole text and is quadratic where the peers double; grow long texts with GetBuffer. Buffers are locked "
        "whenever they move. Kept, 65,536 units in pieces of 16 would keep 268 MB, and are not run.",
        "copy: a million times a text and run at most; a count of sharers ends at 2^31.",
        "hold: the time is of making 10,000 and of letting them go.",
        "find: what is sought ends the text. Near misses: every word has all but one letter of it, or all but the "
        "last. Common letters: every word shares its first three.",
        "upper, then lower: in place, both counted. std::u16string's is a loop over ASCII letters, as CString's rule "
        "is, one unit at a time; QString and UnicodeString change all of Unicode's.",
        "format: std::u16string is snprintf and widening, absl SNPrintF and widening; QString is asprintf.",
        "growth: an element is a unit of the text searched, in which a text of half its size is sought, or a unit "
        "appended or walked.",
        "growth of changes: with the copy that is changed.",
    };
}

void AddCases() {
    static const Inputs inputs = MakeInputs();
    // The order of the columns should not hang on the order in which the program was linked.
    std::sort(Subjects().begin(), Subjects().end(), [](const Subject& a, const Subject& b) {
        const auto rank = [](const Subject& s) { return std::tuple(s.name != kMeasured, s.name != kFloor, s.name); };
        return rank(a) < rank(b);
    });
    for (const Subject& subject : Subjects()) {
        subject.addCases(subject.name, inputs);
    }
    AddGrowth();
    AddTextGrowth();
    AddWorstGrowth();
}

const AddFamily add{{"strings", [](CLI::App&) {}, AddCases, Goals(), Notes}};

}  // namespace

std::vector<Subject>& Subjects() {
    static std::vector<Subject> subjects;
    return subjects;
}

}  // namespace Bench::Strings
