// Searches, comparisons and copies of bytes and of units against the plain forms and the standard library's.
#include <gtest/gtest.h>

#include <vector>

#include "Source/Base/Block16.h"
#include "Source/Base/Block16Plain.h"
#include "Source/Base/ByteSearch.h"
#include "Source/Base/ShortCopies.h"
#include "Source/Base/TwoWay.h"
#include "Source/Base/UnitSearch.h"
#include "Source/Base/UnitSearchPlain.h"
#include "Source/Base/UnitText.h"
#include "tests/Generated.h"

namespace {

using namespace Lum::Internal;

using Generated::ExactUnits;
using Unit = unsigned short;
using Units = std::vector<Unit>;

/// Units drawn from the first few of values that share bytes, 0 among them.
Units Draw(std::mt19937& random, std::size_t size, std::size_t values) {
    constexpr Unit kValues[] = {'a', 0x6100, 'b', 0, 0x6161, 0xFFFF};
    Units units(size);
    std::generate(units.begin(), units.end(), [&] { return kValues[random() % values]; });
    return units;
}

TEST(Blocks, TheFastBlockAnswersAsThePlainOne) {
    const std::string bytes = Generated::EveryByte() + Generated::EveryByte();
    constexpr ByteRanges<3> ranges{{{{0x00, 0x10}, {'0', '9'}, {0x7F, 0xFF}}}};
    for (std::size_t i = 0; i < 256; ++i) {
        const auto fast = Block16::Load(bytes.data() + i);
        const auto plain = Plain::Block16::Load(bytes.data() + i);
        EXPECT_EQ(fast.Letters(), plain.Letters()) << i;
        EXPECT_EQ(fast.InAnyRange(ranges), plain.InAnyRange(ranges)) << i;
        EXPECT_EQ((fast.EqualsAny<'a', '/', '\xFF'>()), (plain.EqualsAny<'a', '/', '\xFF'>())) << i;
        const Generated::Exact start(std::string_view(bytes).substr(i, i % 17));
        EXPECT_EQ(Block16::LoadShort(start.View().data(), start.View().size()).InAnyRange(ranges),
                  Plain::Block16::LoadShort(start.View().data(), start.View().size()).InAnyRange(ranges));
        for (unsigned low = 0; low <= 0xC0; low += 12) {
            const auto from = static_cast<unsigned char>(low);
            EXPECT_EQ(fast.InRange(from, 0xC0), plain.InRange(from, 0xC0)) << i << ' ' << low;
            EXPECT_EQ(fast.Equals(static_cast<char>(from)), plain.Equals(static_cast<char>(from)));
        }
    }
}

TEST(Blocks, SearchesFindWhatTheStandardLibraryFinds) {
    std::mt19937 random(1);
    for (std::size_t size = 0; size < 70; ++size) {
        for (int round = 0; round < 40; ++round) {
            std::string text(size, 'x');
            for (int marks = round % 4; marks > 0 && size > 0; --marks) {
                text[random() % size] = '/';
            }
            const Generated::Exact exact(text);
            const auto first = text.find('/'), last = text.rfind('/');
            EXPECT_EQ(FindFirst(exact.View(), '/'), first) << text;
            EXPECT_EQ(FindLast(exact.View(), '/'), last) << text;
            EXPECT_EQ(FindFirst<Plain::Block16>(exact.View(), '/'), first) << text;
            EXPECT_EQ(FindLast<Plain::Block16>(exact.View(), '/'), last) << text;
        }
    }
}

TEST(Units, AreFoundAndCountedAsThePlainSearchesDo) {
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        Units units(random() % 200, 'x');
        for (auto marks = random() % 4; marks > 0 && !units.empty(); --marks) {
            units[random() % units.size()] = 'a';
        }
        const ExactUnits text(units);
        Generated::OnEveryCpu([&](CpuTier) {
            ASSERT_EQ(FindUnit(text.begin(), text.end(), 'a'), Plain::FindUnit(text.begin(), text.end(), 'a'));
            ASSERT_EQ(FindLastUnit(text.begin(), text.end(), 'a'), Plain::FindLastUnit(text.begin(), text.end(), 'a'));
            ASSERT_EQ(CountMatches(text.begin(), text.end(), 'x'), Plain::CountMatches(text.begin(), text.end(), 'x'));
        });
    }
    // More matches than a lane can count.
    const Units many(3 * 0x8000 * 8 + 5, 'a');
    Generated::OnEveryCpu(
        [&](CpuTier) { EXPECT_EQ(CountMatches(many.data(), many.data() + many.size(), 'a'), many.size()); });
}

TEST(Units, RunsAreFoundWhereTheStandardLibraryFindsThem) {
    std::mt19937 random(2);
    for (int round = 0; round < 20'000; ++round) {
        const std::size_t values = 1 + random() % 6;
        // Short needles of few values stand everywhere; long ones are cut from the text, or nearly so.
        const ExactUnits text(Draw(random, random() % 300, values));
        Units wanted = Draw(random, random() % 6, values);
        if (const std::size_t start = random() % (text.size() + 1); round % 2 == 0) {
            wanted.assign(text.begin() + start, text.begin() + start + random() % (text.size() - start + 1));
            if (round % 4 == 0 && !wanted.empty()) {
                wanted[random() % wanted.size()] = 'a';
            }
        }
        const ExactUnits needle(wanted);
        const Unit* const place = std::search(text.begin(), text.end(), needle.begin(), needle.end());
        const Unit* const expected = place == text.end() && needle.size() > 0 ? nullptr : place;
        Generated::OnEveryCpu([&](CpuTier) {
            ASSERT_EQ(FindUnits(text.begin(), text.end(), needle.begin(), needle.size()), expected) << round;
        });
        if (needle.size() > 0) {
            ASSERT_EQ(TwoWay(needle.begin(), needle.size()).Find(text.begin(), text.end()), expected) << round;
        }
    }
}

TEST(Units, ASearchThatComparesTooMuchGoesOnInLinearTime) {
    // Nearly every position holds any two units of the needle, and differs far behind it, each elsewhere.
    constexpr std::size_t longest = 1'500;
    Units units(60'000 + longest, 'a');
    for (std::size_t i = 0; i < 60'000; i += 1'000) {
        units[i] = 'b';
    }
    units[60'000 - 1] = 'b';
    const ExactUnits text(units);
    for (std::size_t size = 1'000; size < longest + 10; ++size) {
        const Units needle(size, 'a');
        ASSERT_EQ(FindUnits(text.begin(), text.end(), needle.data(), size),
                  size <= longest ? text.end() - longest : nullptr);
    }
}

TEST(Units, LengthsAndShortCopiesAreExact) {
    for (std::size_t size = 0; size < 140; ++size) {
        Units units(size);
        std::iota(units.begin(), units.end(), Unit{0xFF00});
        const ExactUnits from(units), to{Units(size)};
        CopyShortUnits(to.begin(), from.begin(), size);
        EXPECT_TRUE(std::equal(from.begin(), from.end(), to.begin())) << size;
        const Generated::Exact bytes(Generated::EveryByte().substr(0, size));
        const auto copy = std::make_unique<char[]>(size);
        EXPECT_EQ(CopyBytes(copy.get(), bytes.View()), copy.get() + size);
        EXPECT_EQ(std::string_view(copy.get(), size), bytes.View());
        // Zeros before the text are not its end.
        units.insert(units.begin(), size % 20, 0);
        units.resize(units.size() + 20);
        EXPECT_EQ(CountUnits(units.data() + size % 20), size);
    }
}

TEST(Units, ComparisonIsByTheFirstDifferenceThenByLength) {
    std::mt19937 random(3);
    for (int round = 0; round < 20'000; ++round) {
        const Units base(random() % 40, 'x');
        Units other(random() % 40, 'x');
        if (!other.empty() && round % 2 == 0) {
            other[random() % other.size()] = round % 4 == 0 ? 0xFFFF : 1;
        }
        const ExactUnits a(base), b(other);
        // Not base < other: libstdc++ 12 compares the bytes of such vectors where units are big-endian.
        const bool isLess = std::lexicographical_compare(base.begin(), base.end(), other.begin(), other.end());
        ASSERT_EQ(CompareUnits(a.begin(), a.size(), b.begin(), b.size()), isLess ? -1 : base != other);
    }
}

}  // namespace
