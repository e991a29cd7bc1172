// The texts that the cases work on, made without any search, so that none of the subjects decides what
// the others are given.
#include <array>
#include <random>
#include <string_view>
#include <utility>

#include "strings/StringsFamily.h"

namespace Bench::Strings {
namespace {

constexpr std::size_t kFourKilobytes = 2'048;
constexpr std::size_t kMegabyte = 524'288;

constexpr std::array<std::u16string_view, 24> kProse = {
    u"the",    u"ferry",  u"leaves", u"at",   u"noon",  u"and",  u"every",   u"hour",
    u"until",  u"eight",  u"ask",    u"for",  u"seats", u"near", u"windows", u"early",
    u"people", u"gather", u"on",     u"deck", u"when",  u"it",   u"passes",  u"islands",
};
constexpr std::array<std::u16string_view, 6> kNearlyLighthouse = {
    u"lighthorse", u"lighthouze", u"lightmouse", u"bighthouse", u"lighthous", u"lichthouse",
};
constexpr std::array<std::u16string_view, 8> kThere = {
    u"there", u"therefore", u"thereby", u"these", u"then", u"thermal", u"them", u"therapy",
};

/// `size` units of words drawn from `words`, with `divider` between them.
template <std::size_t N>
Units Text(const std::array<std::u16string_view, N>& words, std::size_t size, std::size_t seed,
           char16_t divider = u' ') {
    std::minstd_rand random(static_cast<std::minstd_rand::result_type>(seed + 1));
    Units text;
    text.reserve(size + 30);
    while (text.size() < size) {
        // The low bits of this generator are the poor ones.
        text += words[random() / 64 % words.size()];
        text += divider;
    }
    text.resize(size);
    return text;
}

template <std::size_t N>
SearchCase Searches(const std::string& what, std::size_t size, const std::array<std::u16string_view, N>& words,
                    const Units& wanted) {
    SearchCase result{"strings/find " + what + (size == kMegabyte ? " in 1 MB" : " in 4 KB"), {}};
    const std::size_t count = size == kMegabyte ? 2 : 32;
    for (std::size_t i = 0; i < count; ++i) {
        Units text = Text(words, size - wanted.size() - 1, i) + u' ' + wanted;
        result.searches.push_back({std::move(text), wanted});
    }
    return result;
}

/// Fields as a list of people has them.
constexpr std::array<std::u16string_view, 16> kFields = {
    u"Harbour Street 17",
    u"1984-07-21",
    u"Bergen",
    u"Margarethe",
    u"Olsen",
    u"+47 55 31 20 44",
    u"m.olsen@ferry.example",
    u"captain",
    u"5003",
    u"North Sea Line",
    u"Norway",
    u"full time",
    u"Johansson",
    u"Gothenburg",
    u"2019-11-02",
    u"first officer",
};

/// Texts with the word "harbour" in one of twelve places.
ReplaceCase Replacements(const std::string& name, std::size_t size, std::size_t count) {
    constexpr std::array<std::u16string_view, 12> words = {u"the",  u"harbour", u"walls", u"keep", u"out",    u"what",
                                                           u"wind", u"brings",  u"from",  u"west", u"storms", u"big"};
    ReplaceCase result{name, {}, u"harbour", u"roadstead"};
    for (std::size_t i = 0; i < count; ++i) {
        result.texts.push_back(Text(words, size, i));
    }
    return result;
}

}  // namespace

Inputs MakeInputs() {
    constexpr std::size_t count = 64;
    Inputs inputs;
    for (const auto& [size, name] : {std::pair(10, "10"), std::pair(100, "100"), std::pair(1'000, "1,000")}) {
        // The header of a long buffer lies where other lines of the cache lie, too: few of those.
        const std::size_t texts = size == 1'000 ? 16 : count;
        TextCase sized{std::string("strings/construct ") + name, std::string("strings/copy ") + name, {}};
        for (std::size_t i = 0; i < texts; ++i) {
            sized.texts.push_back(Text(kProse, static_cast<std::size_t>(size), i));
        }
        inputs.sizes.push_back(std::move(sized));
    }
    for (const std::size_t size : {10, 60, 100}) {
        TextCase sized{"strings/hold " + std::to_string(size), {}, {}};
        for (std::size_t i = 0; i < count; ++i) {
            sized.texts.push_back(Text(kProse, size, i));
        }
        inputs.held.push_back(std::move(sized));
    }
    for (const std::size_t size : {kFourKilobytes, kMegabyte}) {
        inputs.searches.push_back(Searches("a word", size, kProse, u"lighthouse"));
        inputs.searches.push_back(Searches("near misses", size, kNearlyLighthouse, u"lighthouse"));
        inputs.searches.push_back(Searches("common letters", size, kThere, u"theremin"));
        inputs.searches.push_back(Searches("a unit", size, kProse, u"\u00A7"));
    }
    inputs.replacements.push_back(Replacements("strings/replace all in 2,048", 2'048, 16));
    inputs.replacements.push_back(Replacements("strings/replace all in 65,536", 65'536, 2));
    for (std::size_t i = 0; i < count; ++i) {
        inputs.thousands.push_back(Text(kProse, 1'000, i));
    }
    inputs.lists = {Text(kFields, kMegabyte, 0, u',')};
    for (std::size_t i = 0; i < count; ++i) {
        const Units wide = Text(kProse, 6 + i % 11, i);
        inputs.formats.push_back({static_cast<int>(i * 7'919 * (i % 5)) - 100'000,
                                  std::string(wide.begin(), wide.end()), wide,
                                  static_cast<double>(i * i) * 1.37 - 1'000});
    }
    return inputs;
}

}  // namespace Bench::Strings
