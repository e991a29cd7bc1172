// The cases of the resources family, the strings they look up, and the subjects that have them.
//
// The same strings lie in a file of each subject's own form. All files are made here, in a folder that
// goes with the program.
#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Case.h"

namespace Bench::Resources {

inline const std::string kRepeated = "resources/look-up, repeated";
inline const std::string kScattered = "resources/look-up, scattered";
inline const std::string kOpen = "resources/open and look up";

struct Entry {
    unsigned int number;
    std::string key;   ///< The number's decimal text.
    std::string text;  ///< UTF-8.
};

struct Inputs {
    std::filesystem::path folder;
    std::vector<Entry> all;        ///< By number.
    std::vector<Entry> repeated;   ///< So few that whoever keeps some keeps these.
    std::vector<Entry> scattered;  ///< All of them, mixed.
};

/// A path that nobody has opened yet and that leads to `folder`: for subjects that never let go of what
/// they have read.
std::filesystem::path FreshPath(const Inputs& inputs);

/// Adds Lum's cases of files that are slow to read for a careless reader. Its files go into `folder`.
void AddWorstGrowth(const std::filesystem::path& folder);

/// A number of so many bytes, the highest first.
std::string Number(std::uint64_t number, int size);

struct Subject {
    std::string name;
    /// Makes the subject's file and registers its cases under `name`; `inputs` outlives them.
    void (*addCases)(const std::string& name, const Inputs& inputs);
};

std::vector<Subject>& Subjects();

/// Adds a subject from a file of its own, ahead of main.
struct AddSubject {
    explicit AddSubject(Subject subject) { Subjects().push_back(std::move(subject)); }
};

/// Adds the two look-up cases of a subject, whose answers `toUtf8` makes comparable.
template <class LookUp, class ToUtf8>
void AddLookUpCases(const std::string& subject, const Inputs& inputs, LookUp lookUp, ToUtf8 toUtf8) {
    for (const Entry& entry : inputs.all) {
        if (toUtf8(lookUp(entry)) != entry.text) {
            throw std::runtime_error("resources: " + subject + " gives another text for " + entry.key);
        }
    }
    AddCase(kRepeated, subject, inputs.repeated, lookUp);
    AddCase(kScattered, subject, inputs.scattered, lookUp);
}

/// Adds the case of opening: `open` gets what `prepare` makes for it outside the clock.
template <class Prepare, class Open>
void AddOpenCase(const std::string& subject, Prepare prepare, Open open) {
    constexpr benchmark::IterationCount count = 100;
    Register(
        kOpen, subject,
        [prepare, open](benchmark::State& state) {
            std::vector<decltype(prepare())> prepared;
            for (benchmark::IterationCount i = 0; i < count + 1; ++i) {
                prepared.push_back(prepare());
            }
            auto next = prepared.begin();
            open(*next++);
            for ([[maybe_unused]] auto iteration : state) {
                ToggleCount();
                open(*next++);
                ToggleCount();
            }
            state.counters[kUnitsCounter] = 1;
        },
        count);
}

}  // namespace Bench::Resources
