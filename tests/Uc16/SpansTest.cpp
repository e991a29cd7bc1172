#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

#include "Platform/Uc16/Uc16.h"
#include "tests/Uc16/Units.h"

namespace {

TEST(Spans, EndWhereTheStandardLibraryFindsTheEnd) {
    // Units that share their low byte, which one bit of a set stands for.
    const std::u16string alphabet = u"aabc,; \tz\u012C\u022C\u0161\xD800";
    std::mt19937 random(1);
    const auto text = [&](std::size_t longest) {
        std::u16string units(random() % (longest + 1), u'\0');
        std::generate(units.begin(), units.end(), [&] { return alphabet[random() % alphabet.size()]; });
        return units;
    };
    for (int round = 0; round < 20000; ++round) {
        const std::u16string units = text(30);
        const std::u16string set = text(7);
        const Units::Exact exact(units);
        const Units::Exact exactSet(set);
        const std::size_t included = std::min(units.find_first_not_of(set), units.size());
        const std::size_t excluded = std::min(units.find_first_of(set), units.size());
        ASSERT_EQ(uc16_wcsspn(exact.Get(), exactSet.Get()), included);
        ASSERT_EQ(uc16_wcscspn(exact.Get(), exactSet.Get()), excluded);
        ASSERT_EQ(uc16_wcspbrk(exact.Get(), exactSet.Get()),
                  excluded < units.size() ? exact.Get() + excluded : nullptr);
    }
}

TEST(Copies, CopyUnitsAndNothingElse) {
    const Units::Exact from(u"abc", false);
    std::array<unsigned short, 4> to{1, 2, 3, 4};
    EXPECT_EQ(uc16_wmemcpy(to.data(), from.Get(), 3), to.data());
    EXPECT_EQ(uc16_wmemcpy(to.data(), nullptr, 0), to.data());
    EXPECT_EQ(to, (std::array<unsigned short, 4>{'a', 'b', 'c', 4}));
}

}  // namespace
