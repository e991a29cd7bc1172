// Numbers against the C library's own formatting.
#include <gtest/gtest.h>

#include <array>
#include <cfenv>
#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "tests/Uc16/Units.h"

namespace {

template <class... Arguments>
void DemandTheSame(const std::string& format, Arguments... arguments) {
    const int size = std::snprintf(nullptr, 0, format.c_str(), arguments...);
    ASSERT_GE(size, 0) << format;
    std::string expected(static_cast<std::size_t>(size) + 1, '\0');
    std::snprintf(expected.data(), expected.size(), format.c_str(), arguments...);
    expected.pop_back();
    const std::u16string wide(format.begin(), format.end());
    ASSERT_EQ(Units::Format(wide.c_str(), arguments...), std::u16string(expected.begin(), expected.end())) << format;
}

/// Makes up conversions and values.
class Generator {
public:
    void Next() {
        m_Stars.clear();
        m_Format = "[%";
        for (const char flag : std::string("-+ #0'")) {
            m_Format += Below(4) == 0 ? std::string(1, flag) : "";
        }
        AddMeasure(40);
        if (Below(2) == 0) {
            m_Format += '.';
            AddMeasure(30);
        }
        switch (Below(8)) {
            case 0:
                Finish("", "eEfFgGaA", Double());
                break;
            case 1:
                Finish("l", "eEfFgGaA", Double());
                break;
            case 2:
                Finish("L", "eEfFgGaA", static_cast<long double>(Double()) * 1.1L);
                break;
            case 3:
                Finish("", "p", reinterpret_cast<void*>(static_cast<std::uintptr_t>(Integer() | 1)));
                break;
            default:
                FinishInteger();
                break;
        }
    }

private:
    unsigned Below(std::size_t limit) { return static_cast<unsigned>(m_Random() % limit); }
    void AddMeasure(unsigned most) {
        const auto value = static_cast<int>(Below(Below(50) == 0 ? 3000 : most));
        switch (Below(3)) {
            case 0:
                m_Format += std::to_string(value);
                break;
            case 1:
                m_Format += '*';
                m_Stars.push_back(Below(3) == 0 ? -value : value);
                break;
            default:
                break;
        }
    }
    std::int64_t Integer() {
        const std::array<std::int64_t, 8> edges{0, 1, -1, INT_MIN, INT_MAX, UINT_MAX, INT64_MIN, INT64_MAX};
        const auto bits = static_cast<std::int64_t>(m_Random());
        return bits % 4 == 0 ? edges[Below(edges.size())] : bits >> Below(64);
    }
    double Double() {
        const std::array<double, 12> edges{0.0,     -0.0,    0.5,    2.5, 1e15,      999999.5,
                                           DBL_MAX, DBL_MIN, 5e-324, NAN, -HUGE_VAL, HUGE_VAL};
        switch (Below(4)) {
            case 0:
                return edges[Below(edges.size())];
            case 1:
                return static_cast<double>(Integer()) / 1024;
            case 2:
                return static_cast<double>(static_cast<int>(m_Random())) / 1e6;
            default:
                break;
        }
        const std::uint64_t bits = m_Random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    void FinishInteger() {
        const char* const letters = "diuoxX";
        switch (Below(9)) {
            case 0:
                return Finish("hh", letters, static_cast<int>(Integer()));
            case 1:
                return Finish("h", letters, static_cast<int>(Integer()));
            case 2:
                return Finish("l", letters, static_cast<long>(Integer()));
            case 3:
                return Finish("ll", letters, static_cast<long long>(Integer()));
            case 4:
                return Finish(Below(2) == 0 ? "q" : "L", letters, static_cast<long long>(Integer()));
            case 5:
                return Finish("j", letters, static_cast<std::intmax_t>(Integer()));
            case 6:
                return Finish("z", letters, static_cast<std::size_t>(Integer()));
            case 7:
                return Finish("t", letters, static_cast<std::ptrdiff_t>(Integer()));
            default:
                return Finish("", letters, static_cast<int>(Integer()));
        }
    }
    template <class Value>
    void Finish(const char* length, const std::string& letters, Value value) {
        m_Format += length;
        m_Format += letters[Below(letters.size())];
        m_Format += ']';
        switch (m_Stars.size()) {
            case 0:
                DemandTheSame(m_Format, value);
                break;
            case 1:
                DemandTheSame(m_Format, m_Stars[0], value);
                break;
            default:
                DemandTheSame(m_Format, m_Stars[0], m_Stars[1], value);
                break;
        }
    }

    std::mt19937_64 m_Random{5};
    std::string m_Format;
    std::vector<int> m_Stars;
};

TEST(Numbers, AreWhatTheCLibraryMakesOfThem) {
    Generator generator;
    for (int round = 0; round < 100000 && !::testing::Test::HasFatalFailure(); ++round) {
        generator.Next();
    }
}

TEST(Numbers, HaveEveryDigitThatIsAskedFor) {
    for (const char* const format :
         {"%.1500f", "%.900e", "%.900g", "%#.2000g", "%.1200a", "%-3000.1100f|", "%03000.0f"}) {
        for (const double value : {DBL_MAX, DBL_TRUE_MIN, DBL_MIN, 0.1, 0.0, 123456789.125}) {
            DemandTheSame(format, value);
        }
    }
    for (const char* const format : {"%Lf", "%.17000Lf", "%.12000Le", "%#.20000Lg", "%.20000Lg", "%.100La"}) {
        for (const long double value : {LDBL_MAX, LDBL_TRUE_MIN, -0.1L}) {
            DemandTheSame(format, value);
        }
    }
}

TEST(Numbers, FollowTheRoundingModeAsTheCLibraryDoes) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        std::fesetround(mode);
        for (const char* const format : {"%.0f", "%.1e", "%.2g", "%.1a"}) {
            DemandTheSame(format, 0.51);
            DemandTheSame(format, -1.55);
        }
    }
}

TEST(Numbers, DoNotFollowTheLocale) {
    // Those with a decimal comma where they are installed.
    for (const char* const name : {"C", "de_DE.UTF-8", "fr_FR.UTF-8", "ru_RU.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            EXPECT_EQ(Units::Format(u"%f %'d %#g %a %Lf", 1.5, 1234567, 1.5, 1.5, 1.5L),
                      u"1.500000 1234567 1.50000 0x1.8p+0 1.500000")
                << name;
        }
    }
    std::setlocale(LC_ALL, "C");
}

}  // namespace
