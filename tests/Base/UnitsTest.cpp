#include "Source/Base/UnitSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Source/Base/TwoWay.h"
#include "Source/Base/UnitCase.h"
#include "Source/Base/UnitCompare.h"

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

/// Units drawn from few values, of which some share a byte and one is 0.
Units Draw(std::mt19937& random, std::size_t size, std::size_t values) {
    constexpr Unit kValues[] = {'a', 0x6100, 'b', 0, 0x6161, 0xFFFF};
    Units units(size);
    std::generate(units.begin(), units.end(), [&] { return kValues[random() % values]; });
    return units;
}

/// The place of what a search found, or the end where it found nothing.
std::ptrdiff_t Place(const Exact& text, const Unit* found) {
    return (found == nullptr ? text.end() : found) - text.begin();
}

TEST(Units, SearchesFindWhatTheStandardLibraryFinds) {
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        const std::size_t values = 1 + random() % 6;
        const Exact text(Draw(random, random() % 100, values));
        const Exact needle(Draw(random, random() % (round % 3 == 0 ? 40 : 6), values));
        const auto expected = std::search(text.begin(), text.end(), needle.begin(), needle.end()) - text.begin();
        const Unit* const found = Lum::FindUnits(text.begin(), text.end(), needle.begin(), needle.size());
        ASSERT_EQ(Place(text, found), expected) << round;
        if (needle.size() > 0) {
            const Lum::TwoWay search(needle.begin(), needle.size());
            ASSERT_EQ(Place(text, search.Find(text.begin(), text.end())), expected) << round;
        }
    }
}

}  // namespace
