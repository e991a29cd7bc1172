// The cases of the time family, what they work on, and the subjects that have them.
//
// The times are taken evenly from 1970 to 2100 and mixed, so that no subject's branches can be learnt.
// Fractions have seven digits, so that they are the same number as digits and as ticks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Case.h"

namespace Bench::Time {

inline const std::string kToTicks = "time/fields to ticks";
inline const std::string kToFields = "time/ticks to fields";
inline const std::string kToText = "time/text";

struct Fields {
    int year;
    int month;
    int day;
    int hour;
    int minute;
    int second;
    unsigned int fraction;

    friend bool operator==(const Fields&, const Fields&) = default;
};

/// The same times in every form.
struct Inputs {
    std::vector<Fields> fields;
    std::vector<std::int64_t> ticks;  ///< Of 100 ns, from 1970.
    std::vector<std::string> texts;   ///< Without fractions.
};

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

/// Adds a case for a subject that turns each of `from`, prepared, into the same place of `to`, and makes
/// sure that it does: the same work is measured of all.
template <class From, class To, class Prepare, class Call>
void AddTimeCase(const std::string& caseName, const std::string& subject, const std::vector<From>& from,
                 const std::vector<To>& to, Prepare prepare, Call call) {
    for (std::size_t i = 0; i < from.size(); ++i) {
        if (!(call(prepare(from[i])) == to[i])) {
            throw std::runtime_error(caseName + ": " + subject + " gives another result than was expected");
        }
    }
    AddPreparedCase(caseName, subject, from, prepare, call);
}

/// Takes the input as it is.
inline constexpr auto kAsGiven = [](const auto& input) { return input; };

}  // namespace Bench::Time
