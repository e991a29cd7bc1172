#include "Source/Base/UnitSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

#include "Source/Base/CopyUnits.h"
#include "Source/Base/TwoWay.h"
#include "Source/Base/UnitCase.h"
#include "Source/Base/UnitCasePlain.h"
#include "Source/Base/UnitCompare.h"
#include "Source/Base/UnitComparePlain.h"
#include "Source/Base/UnitKernel.h"

namespace {

using Unit = unsigned short;
using Units = std::vector<Unit>;

/// Units in a heap block of exactly their size.
class Exact {
public:
    explicit Exact(const Units& units) : m_Units(new Unit[units.size()]), m_Size(units.size()) {
        std::copy(units.begin(), units.end(), m_Units.get());
    }
    [[nodiscard]] Unit* begin() const { return m_Units.get(); }
    [[nodiscard]] Unit* end() const { return m_Units.get() + m_Size; }
    [[nodiscard]] std::size_t size() const { return m_Size; }

private:
    std::unique_ptr<Unit[]> m_Units;
    std::size_t m_Size;
};

/// Units drawn from the first few of values that share bytes, 0 among them.
Units Draw(std::mt19937& random, std::size_t size, std::size_t values) {
    constexpr Unit kValues[] = {'a', 0x6100, 'b', 0, 0x6161, 0xFFFF};
    Units units(size);
    std::generate(units.begin(), units.end(), [&] { return kValues[random() % values]; });
    return units;
}

std::vector<const Lum::UnitKernel*> FastKernels() {
#ifdef __SSE2__
    if (Lum::Avx2::IsSupported()) {
        return {&Lum::kSse2Units, &Lum::kAvx2Units};
    }
    return {&Lum::kSse2Units};
#else
    return {};
#endif
}

TEST(Units, FastKernelsAnswerAsThePlainOne) {
    std::mt19937 random(1);
    const Lum::UnitKernel& plain = Lum::kPlainUnits;
    for (int round = 0; round < 20'000; ++round) {
        Units units(random() % 200, 'x');
        for (auto marks = random() % 4; marks > 0 && !units.empty(); --marks) {
            units[random() % units.size()] = marks == 1 ? 'b' : 'a';
        }
        const Exact text(units);
        // A needle of two to nine marks, all of which the text reaches with its last units.
        const Exact needle(Units(text.begin(), text.begin() + std::min<std::size_t>(text.size(), 2 + random() % 30)));
        if (needle.size() < 2) {
            continue;
        }
        const Unit* const stop = text.end() - needle.size() + 1;
        Lum::NeedleMarks marks(needle.begin(), needle.size());
        for (std::size_t i = 1; i < std::min<std::size_t>(needle.size() - 1, 1 + random() % 9); ++i) {
            marks.Add(i);
        }
        const std::size_t start = random() % (text.size() - needle.size() + 1);
        for (const Lum::UnitKernel* const fast : FastKernels()) {
            ASSERT_EQ(fast->findUnit(text.begin(), text.end(), 'a'), plain.findUnit(text.begin(), text.end(), 'a'));
            ASSERT_EQ(fast->findLastUnit(text.begin(), text.end(), 'a'),
                      plain.findLastUnit(text.begin(), text.end(), 'a'));
            ASSERT_EQ(fast->findMarks(text.begin() + start, stop, marks),
                      plain.findMarks(text.begin() + start, stop, marks));
            ASSERT_EQ(fast->countMatches(text.begin(), text.end(), 'x'),
                      plain.countMatches(text.begin(), text.end(), 'x'));
        }
    }
}

TEST(Units, CountsDoNotOverflowTheirLanes) {
    const Units units(3 * 0x8000 * 8 + 5, 'a');
    EXPECT_EQ(Lum::CountMatches(units.data(), units.data() + units.size(), 'a'), units.size());
}

TEST(Units, RunsAreFoundWhereTheStandardLibraryFindsThem) {
    std::mt19937 random(2);
    for (int round = 0; round < 20'000; ++round) {
        const std::size_t values = 1 + random() % 6;
        // Short needles of few values stand everywhere; long ones are cut from the text, or nearly so.
        const Exact text(Draw(random, random() % 300, values));
        Units wanted = Draw(random, random() % 6, values);
        if (const std::size_t start = random() % (text.size() + 1); round % 2 == 0) {
            wanted.assign(text.begin() + start, text.begin() + start + random() % (text.size() - start + 1));
            if (round % 4 == 0 && !wanted.empty()) {
                wanted[random() % wanted.size()] = 'a';
            }
        }
        const Exact needle(wanted);
        const Unit* const place = std::search(text.begin(), text.end(), needle.begin(), needle.end());
        const Unit* const expected = place == text.end() && needle.size() > 0 ? nullptr : place;
        ASSERT_EQ(Lum::FindUnits(text.begin(), text.end(), needle.begin(), needle.size()), expected) << round;
        if (needle.size() > 0) {
            ASSERT_EQ(Lum::TwoWay(needle.begin(), needle.size()).Find(text.begin(), text.end()), expected) << round;
        }
    }
}

TEST(Units, ASearchThatComparesTooMuchGoesOnInLinearTime) {
    // Nearly every place holds any two units of the needle, and differs far behind it, each elsewhere.
    constexpr std::size_t longest = 1'500;
    Units units(60'000 + longest, 'a');
    for (std::size_t i = 0; i < 60'000; i += 1'000) {
        units[i] = 'b';
    }
    units[60'000 - 1] = 'b';
    const Exact text(units);
    for (std::size_t size = 1'000; size < longest + 10; ++size) {
        const Units needle(size, 'a');
        ASSERT_EQ(Lum::FindUnits(text.begin(), text.end(), needle.data(), size),
                  size <= longest ? text.end() - longest : nullptr);
    }
}

TEST(Units, LengthEndsAtTheFirstZero) {
    for (std::size_t start = 0; start < 20; ++start) {
        for (std::size_t size = 0; size < 40; ++size) {
            // Zeros before the text count as little as those behind its end.
            Units units(start, 0);
            units.resize(start + size, 'a');
            units.resize(start + size + 20, 0);
            EXPECT_EQ(Lum::CountUnits(units.data() + start), size) << start;
        }
    }
}

TEST(Units, ShortCopiesFillTheirRoomExactly) {
    for (std::size_t size = 0; size < 140; ++size) {
        Units units(size);
        std::iota(units.begin(), units.end(), Unit{0xFF00});
        const Exact from(units);
        const Exact to{Units(size)};
        Lum::CopyShortUnits(to.begin(), from.begin(), size);
        EXPECT_TRUE(std::equal(from.begin(), from.end(), to.begin())) << size;
    }
}

TEST(Units, CaseIsThatOfAsciiForEveryValue) {
    for (std::size_t start = 0; start < 9; ++start) {
        Units all(0x10000 - start);
        for (std::size_t i = 0; i < all.size(); ++i) {
            all[i] = static_cast<Unit>(i + start);
        }
        const Exact upper(all);
        const Exact lower(all);
        Lum::ToAsciiUpper(upper.begin(), upper.size());
        Lum::ToAsciiLower(lower.begin(), lower.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            ASSERT_EQ(upper.begin()[i], all[i] >= 'a' && all[i] <= 'z' ? all[i] - 0x20 : all[i]);
            ASSERT_EQ(lower.begin()[i], all[i] >= 'A' && all[i] <= 'Z' ? all[i] + 0x20 : all[i]);
        }
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
        const Exact a(base);
        const Exact b(other);
        const std::size_t shared = std::min(a.size(), b.size());
        ASSERT_EQ(Lum::FirstDifference(a.begin(), b.begin(), shared),
                  Lum::Plain::FirstDifference(a.begin(), b.begin(), shared));
        ASSERT_EQ(Lum::CompareUnits(a.begin(), a.size(), b.begin(), b.size()), base < other ? -1 : base > other);
        ASSERT_EQ(Lum::EqualUnits(a.begin(), b.begin(), shared), std::equal(a.begin(), a.begin() + shared, b.begin()));
    }
}

}  // namespace
