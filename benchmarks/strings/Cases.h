// The family's cases, said once for all subjects.
//
// A subject is a struct `Ops` with its string type `Text` and what its users would write:
//   From(std::u16string_view), ToUnits(const Text&), Append(Text&, char16_t), Append(Text&, const Text&),
//   Find(const Text&, const Text& wanted), FindUnit(const Text&, char16_t): the place found,
//   Replaced(const Text&, from, to), Mid(const Text&, first, count), MakeUpper(Text&), MakeLower(Text&),
//   AreEqual, Compare, Tokenise(const Text&, char16_t, visit), and BeforeItGoes(Text&), which is called for
//   every string ahead of its end.
#pragma once

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Case.h"
#include "strings/StringsFamily.h"

namespace Bench::Strings {

/// In which rows the cases with strings that are made and destroyed appear.
struct Rows {
    std::string suffix = kLocked;
    bool areFixed = false;

    /// How many iterations to run where `few` of them use up what they may; 0 where time decides.
    [[nodiscard]] benchmark::IterationCount Iterations(benchmark::IterationCount few) const {
        return areFixed ? few : 0;
    }
    [[nodiscard]] Count Counts() const { return areFixed ? Count::TimeAndKeptBytes : Count::Time; }
};

/// The program measures no subject whose result is another.
inline void Demand(bool isRight, const std::string& caseName, const std::string& subject) {
    if (!isRight) {
        throw std::runtime_error(subject + " gives another result in " + caseName);
    }
}

template <class Ops>
typename Ops::Text Make(const Units& units) {
    return Ops::From(units);
}

template <class Ops>
void AddConstruct(const std::string& subject, const Inputs& inputs, const Rows& rows) {
    for (const TextCase& c : inputs.sizes) {
        AddPreparedCase(
            c.constructName + rows.suffix, subject, c.texts,
            [](const Units& units) { return std::u16string_view(units); },
            [](std::u16string_view units) {
                auto text = Ops::From(units);
                Ops::BeforeItGoes(text);
                return text;
            },
            rows.Counts(), rows.Iterations(8));
    }
}

template <class Ops>
void AddAppend(const std::string& subject, const Inputs& inputs, const Rows& rows) {
    using Text = typename Ops::Text;
    const auto append = [](std::size_t pieces) {
        return [pieces](const auto& piece) {
            Text text;
            for (std::size_t i = 0; i < pieces; ++i) {
                Ops::Append(text, piece);
            }
            Ops::BeforeItGoes(text);
            return text;
        };
    };
    AddPreparedCase(
        kAppendUnits + rows.suffix, subject, inputs.lists, [](const Units&) { return u'x'; }, append(1'000),
        rows.Counts(), rows.Iterations(1));
    const auto piece = [](const auto&) { return Ops::From(u"sixteen units : "); };
    AddPreparedCase(kAppendShort + rows.suffix, subject, inputs.lists, piece, append(256), rows.Counts(),
                    rows.Iterations(4));
    if (!rows.areFixed) {
        AddPreparedCase(kAppendLong + rows.suffix, subject, inputs.lists, piece, append(4'096));
    }
}

template <class Ops>
void AddReplace(const std::string& subject, const Inputs& inputs, const Rows& rows) {
    using Text = typename Ops::Text;
    const auto plainly = [](const Units& units, const Units& from, const Units& to) {
        Units result;
        std::size_t start = 0;
        for (std::size_t at = 0; (at = units.find(from, start)) != Units::npos; start = at + from.size()) {
            result.append(units, start, at - start).append(to);
        }
        return result.append(units, start);
    };
    for (const ReplaceCase& c : inputs.replacements) {
        const auto replace = [from = Make<Ops>(c.from), to = Make<Ops>(c.to)](const Text& text) {
            Text result = Ops::Replaced(text, from, to);
            Ops::BeforeItGoes(result);
            return result;
        };
        const Units& sample = c.texts.front();
        Demand(Ops::ToUnits(replace(Make<Ops>(sample))) == plainly(sample, c.from, c.to), c.name, subject);
        AddPreparedCase(c.name + rows.suffix, subject, c.texts, Make<Ops>, replace, rows.Counts(), rows.Iterations(2));
    }
}

template <class Ops>
void AddMid(const std::string& subject, const Inputs& inputs, const Rows& rows) {
    const auto add = [&](const std::string& caseName, int count) {
        const auto mid = [first = 0, count](const typename Ops::Text& text) mutable {
            first = first < 900 ? first + 37 : 0;
            auto part = Ops::Mid(text, first, count);
            Ops::BeforeItGoes(part);
            return part;
        };
        AddPreparedCase(caseName + rows.suffix, subject, inputs.thousands, Make<Ops>, mid, rows.Counts(),
                        rows.Iterations(8));
    };
    add(kMidOf5, 5);
    add(kMid, 50);
}

/// The figure is for one token.
template <class Ops>
void AddTokenise(const std::string& subject, const Inputs& inputs, const Rows& rows) {
    const Units& units = inputs.lists.front();
    const auto tokenise = [](const typename Ops::Text& text) {
        std::size_t count = 0;
        Ops::Tokenise(text, u',', [&](auto& token) {
            benchmark::DoNotOptimize(token);
            Ops::BeforeItGoes(token);
            ++count;
        });
        return count;
    };
    // The list may end with a comma, behind which there is no token for any subject.
    Demand(tokenise(Make<Ops>(units)) == static_cast<std::size_t>(std::count(units.begin(), units.end() - 1, u',')) + 1,
           kTokenise, subject);
    Register(
        kTokenise + rows.suffix, subject,
        [&units, tokenise, areKept = rows.areFixed](benchmark::State& state) {
            const auto text = Make<Ops>(units);
            const auto before = HeapBytes();
            const auto count = static_cast<double>(tokenise(text));
            const auto kept = HeapBytes() - before;
            for ([[maybe_unused]] auto iteration : state) {
                ToggleCount();
                auto result = tokenise(text);
                benchmark::DoNotOptimize(result);
                ToggleCount();
            }
            state.counters[kUnitsCounter] = count;
            if (areKept) {
                state.counters[kKeptCounter] = static_cast<double>(kept) / count;
            }
        },
        rows.Iterations(1));
}

/// The cases in which strings come and go.
template <class Ops>
void AddComingAndGoing(const std::string& subject, const Inputs& inputs, const Rows& rows = {}) {
    AddConstruct<Ops>(subject, inputs, rows);
    AddAppend<Ops>(subject, inputs, rows);
    AddReplace<Ops>(subject, inputs, rows);
    AddMid<Ops>(subject, inputs, rows);
    AddTokenise<Ops>(subject, inputs, rows);
}

/// Copies each text, a number of times that does not fill Lum's count of sharers.
template <class Ops>
void AddCopy(const std::string& subject, const Inputs& inputs) {
    constexpr benchmark::IterationCount copies = benchmark::IterationCount{1} << 20;
    for (const TextCase& c : inputs.sizes) {
        AddPreparedCase(
            c.copyName, subject, c.texts, Make<Ops>,
            [](const typename Ops::Text& text) { return typename Ops::Text(text); }, Count::Time, copies);
    }
}

/// Nothing is locked: a buffer from a pool that others have filled would take no memory.
template <class Ops>
void AddHold(const std::string& subject, const Inputs& inputs) {
    for (const TextCase& c : inputs.held) {
        AddHeldCase(c.constructName, subject, c.texts, Make<Ops>);
    }
}

template <class Ops>
void AddFind(const std::string& subject, const Inputs& inputs) {
    using Text = typename Ops::Text;
    struct Prepared {
        Text text;
        Text wanted;
        char16_t unit;
    };
    const auto prepare = [](const Search& search) {
        return Prepared{Make<Ops>(search.text), Make<Ops>(search.wanted), search.wanted.front()};
    };
    for (const SearchCase& c : inputs.searches) {
        const Search& first = c.searches.front();
        const std::size_t place = first.text.size() - first.wanted.size();
        const auto add = [&](auto find) {
            Demand(static_cast<std::size_t>(find(prepare(first))) == place, c.name, subject);
            AddPreparedCase(c.name, subject, c.searches, prepare, find);
        };
        if (first.wanted.size() == 1) {
            add([](const Prepared& search) { return Ops::FindUnit(search.text, search.unit); });
        } else {
            add([](const Prepared& search) { return Ops::Find(search.text, search.wanted); });
        }
    }
}

template <class Ops>
void AddChangeOfCase(const std::string& subject, const Inputs& inputs) {
    using Text = typename Ops::Text;
    // Both ways, so that each call changes every letter, in place.
    AddPreparedCase(kCase, subject, inputs.thousands, Make<Ops>, [](Text& text) -> const Text& {
        Ops::MakeUpper(text);
        benchmark::DoNotOptimize(text);
        Ops::MakeLower(text);
        return text;
    });
}

/// Texts that are equal, and texts that differ in their last unit, each in a buffer of its own.
template <class Ops>
void AddComparison(const std::string& subject, const Inputs& inputs) {
    using Text = typename Ops::Text;
    const auto twins = [](const Units& units) { return std::pair(Make<Ops>(units), Make<Ops>(units)); };
    const auto siblings = [](const Units& units) {
        return std::pair(Make<Ops>(units), Make<Ops>(units.substr(0, units.size() - 1) + u'~'));
    };
    const auto areEqual = [](const std::pair<Text, Text>& texts) { return Ops::AreEqual(texts.first, texts.second); };
    const auto compare = [](const std::pair<Text, Text>& texts) { return Ops::Compare(texts.first, texts.second); };
    Demand(areEqual(twins(inputs.thousands.front())), kEqual, subject);
    Demand(compare(siblings(inputs.thousands.front())) < 0, kCompare, subject);
    AddPreparedCase(kEqual, subject, inputs.thousands, twins, areEqual);
    AddPreparedCase(kCompare, subject, inputs.thousands, siblings, compare);
}

/// The cases in which all strings stay.
template <class Ops>
void AddStaying(const std::string& subject, const Inputs& inputs) {
    AddCopy<Ops>(subject, inputs);
    AddHold<Ops>(subject, inputs);
    AddFind<Ops>(subject, inputs);
    AddChangeOfCase<Ops>(subject, inputs);
    AddComparison<Ops>(subject, inputs);
}

}  // namespace Bench::Strings
