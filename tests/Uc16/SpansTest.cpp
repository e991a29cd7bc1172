#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

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
        // Now and then a long run before anything that could end it.
        const std::size_t run = random() % 4 == 0 ? random() % (2 * longest) : 0;
        std::u16string units(run + random() % (longest + 1), u'a');
        std::generate(units.begin() + static_cast<std::ptrdiff_t>(run), units.end(),
                      [&] { return alphabet[random() % alphabet.size()]; });
        return units;
    };
    for (int round = 0; round < 20000; ++round) {
        const std::u16string units = text(30);
        const std::u16string set = text(7);
        const Units::Exact exactSet(set);
        const std::size_t shift = random() % 8;
        const Units::Exact block(std::u16string(shift, u'a') + units);
        const unsigned short* const exact = block.Get() + shift;
        const std::size_t included = std::min(units.find_first_not_of(set), units.size());
        const std::size_t excluded = std::min(units.find_first_of(set), units.size());
        ASSERT_EQ(uc16_wcsspn(exact, exactSet.Get()), included);
        ASSERT_EQ(uc16_wcscspn(exact, exactSet.Get()), excluded);
        ASSERT_EQ(uc16_wcspbrk(exact, exactSet.Get()), excluded < units.size() ? exact + excluded : nullptr);
    }
}

TEST(Spans, ReadNoPageBehindTheText) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* const pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    auto* const end = static_cast<unsigned short*>(pages) + page / sizeof(unsigned short);
    ASSERT_EQ(mprotect(end, page, PROT_NONE), 0);
    for (std::size_t length = 0; length < 100; ++length) {
        unsigned short* const text = end - length - 1;
        std::fill(text, end - 1, 'a');
        for (const char16_t* const set : {u"", u",", u",;", u",;:.!"}) {
            EXPECT_EQ(uc16_wcscspn(text, Units::Exact(set).Get()), length);
        }
        EXPECT_EQ(uc16_wcsspn(text, Units::Exact(u"ab").Get()), length);
    }
    munmap(pages, 2 * page);
}

TEST(Copies, CopyUnitsAndNothingElse) {
    const Units::Exact from(u"abc", false);
    std::array<unsigned short, 4> to{1, 2, 3, 4};
    EXPECT_EQ(uc16_wmemcpy(to.data(), from.Get(), 3), to.data());
    EXPECT_EQ(uc16_wmemcpy(to.data(), nullptr, 0), to.data());
    EXPECT_EQ(to, (std::array<unsigned short, 4>{'a', 'b', 'c', 4}));
}

}  // namespace
