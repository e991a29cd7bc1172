// Floating-point numbers: the standard library's exact conversions where they give what printf gives, and for
// the rest the C library, with its "C" locale.
#include <algorithm>
#include <array>
#include <bit>
#include <cfenv>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <new>

#include <locale.h>  // NOLINT: newlocale and uselocale are POSIX, not C

#include "Platform/Uc16/FormatNumbers.h"

using namespace Lum::Internal;

namespace Lum::Internal::Uc16 {

namespace {

/// No number of the type has more digits that are not 0 behind its point, in whatever form.
template <class Number>
constexpr int kMostFraction = std::numeric_limits<Number>::digits - std::numeric_limits<Number>::min_exponent;

constexpr int kDefaultPrecision = 6;

char Lower(char letter) { return static_cast<char>(letter | 0x20); }
bool IsUpper(char letter) { return (letter & 0x20) == 0; }

/// "%.*f" of what most numbers are: from 0.25 to 2^52, with up to nine digits behind the point. All is exact, and
/// what is left behind the last digit rounds it, a half to the even one. Empty for other numbers.
std::string_view ViaIntegers(double magnitude, int precision, DigitBuffer& buffer) {
    constexpr std::array<std::uint32_t, 10> powers{1,       10,        100,        1'000,       10'000,
                                                   100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000};
    constexpr int mantissaBits = 52;
    constexpr std::uint64_t hidden = std::uint64_t{1} << mantissaBits;
    const auto last = static_cast<std::size_t>(precision);
    if (!(magnitude >= 0.25 && magnitude < static_cast<double>(hidden)) || last >= powers.size()) {
        return {};
    }
    // The number is the mantissa divided by two to the power of `down`, which is 1 to 54.
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const int down = 1023 + mantissaBits - static_cast<int>(bits >> mantissaBits);
    const std::uint64_t mantissa = (bits & (hidden - 1)) | hidden;
    std::uint64_t whole = mantissa >> down;
    const std::uint64_t one = std::uint64_t{1} << down;
    std::uint64_t rest = mantissa & (one - 1);
    std::uint32_t fraction = 0;
    // Three digits at a time: 54 bits times 1,000 fit.
    for (std::size_t left = last; left > 0;) {
        const std::uint32_t power = powers[std::min<std::size_t>(left, 3)];
        rest *= power;
        fraction = fraction * power + static_cast<std::uint32_t>(rest >> down);
        rest &= one - 1;
        left -= std::min<std::size_t>(left, 3);
    }
    const bool isOdd = ((last == 0 ? whole : fraction) & 1) != 0;
    fraction += rest > one / 2 || (rest == one / 2 && isOdd) ? 1 : 0;
    if (fraction == powers[last]) {
        ++whole;
        fraction = 0;
    }
    char* const first = buffer.characters.data();
    char* const most = first + buffer.characters.size();
    // Short divisions are cheap, and most numbers are short.
    char* end = whole <= UINT32_MAX ? std::to_chars(first, most, static_cast<std::uint32_t>(whole)).ptr
                                    : std::to_chars(first, most, whole).ptr;
    if (last > 0) {
        *end = '.';
        for (std::size_t i = last; i > 0; --i, fraction /= 10) {
            end[i] = static_cast<char>('0' + fraction % 10);
        }
        end += last + 1;
    }
    return {first, static_cast<std::size_t>(end - first)};
}

std::string_view ViaStandardLibrary(double magnitude, char letter, int precision, DigitBuffer& buffer) {
    if (Lower(letter) == 'f') {
        if (const std::string_view text = ViaIntegers(magnitude, precision, buffer); !text.empty()) {
            return text;
        }
    }
    const auto form = Lower(letter) == 'f'   ? std::chars_format::fixed
                      : Lower(letter) == 'e' ? std::chars_format::scientific
                                             : std::chars_format::general;
    char* const first = buffer.characters.data();
    char* const last = std::to_chars(first, first + buffer.characters.size(), magnitude, form, precision).ptr;
    if (IsUpper(letter)) {
        std::replace(first, last, 'e', 'E');
    }
    return {first, static_cast<std::size_t>(last - first)};
}

locale_t CLocale() {
    // After an exception the next call tries again.
    static const locale_t locale = [] {
        const locale_t made = newlocale(LC_ALL_MASK, "C", locale_t{});
        return made != locale_t{} ? made : throw std::bad_alloc();
    }();
    return locale;
}

/// Makes this thread's locale "C" for a scope.
class InCLocale {
public:
    InCLocale() : m_Before(uselocale(CLocale())) {}
    InCLocale(const InCLocale&) = delete;
    InCLocale& operator=(const InCLocale&) = delete;
    ~InCLocale() { uselocale(m_Before); }

private:
    locale_t m_Before;
};

/// The C library's formatting.
template <class Number>
std::string_view ViaCLibrary(Number number, const Conversion& conversion, int precision, DigitBuffer& buffer) {
    std::array<char, 8> format{};
    auto at = format.begin();
    *at++ = '%';
    if (conversion.alternate) {
        *at++ = '#';
    }
    at = std::copy_n(".*", 2, at);
    if constexpr (sizeof(Number) > sizeof(double)) {
        *at++ = 'L';
    }
    *at = conversion.letter;

    const auto print = [&](char* to, std::size_t size) {
        const int printed = std::snprintf(to, size, format.data(), precision, number);
        if (printed < 0) {
            throw std::bad_alloc();  // A number with a precision that an int holds has no other way to fail.
        }
        return static_cast<std::size_t>(printed);
    };
    const InCLocale inCLocale;
    const char* text = buffer.characters.data();
    const std::size_t size = print(buffer.characters.data(), buffer.characters.size());
    if (size >= buffer.characters.size()) {
        buffer.more.resize(size + 1);
        print(buffer.more.data(), buffer.more.size());
        text = buffer.more.data();
    }
    return {text, size};
}

template <class Number>
std::string_view Digits(Number number, const Conversion& conversion, int precision, DigitBuffer& buffer) {
    if constexpr (sizeof(Number) == sizeof(double)) {
        // Left to the C library: points without digits behind them, hexadecimal forms, whose first digit is
        // free, and roundings that only printf follows.
        if (Lower(conversion.letter) != 'a' && !conversion.alternate && std::fegetround() == FE_TONEAREST) {
            return ViaStandardLibrary(std::abs(number), conversion.letter, precision, buffer);
        }
    }
    std::string_view text = ViaCLibrary(number, conversion, precision, buffer);
    text.remove_prefix(std::signbit(number) ? 1 : 0);
    return text;
}

template <class Number>
NumberText Text(const Conversion& conversion, Number number, DigitBuffer& buffer) {
    const char letter = Lower(conversion.letter);
    NumberText text;
    if (std::signbit(number)) {
        text.AddPrefix('-');
    } else if (conversion.plus || conversion.space) {
        text.AddPrefix(conversion.plus ? '+' : ' ');
    }
    if (!std::isfinite(number)) {
        const bool isUpper = IsUpper(conversion.letter);
        text.digits = std::isnan(number) ? (isUpper ? "NAN" : "nan") : (isUpper ? "INF" : "inf");
        return text;
    }
    text.mayFillWithZeros = true;
    int precision = conversion.precision.value;
    if (precision < 0 && letter != 'a') {
        precision = kDefaultPrecision;
    }
    // Digits that are known to be zeros are neither computed nor stored.
    const int asked = std::min(precision, kMostFraction<Number>);
    if (letter != 'g' || conversion.alternate) {
        text.trailingZeros = precision - asked;
    }
    std::string_view digits = Digits(number, conversion, asked, buffer);
    if (letter == 'a') {
        text.AddPrefix('0');
        text.AddPrefix(conversion.letter == 'a' ? 'x' : 'X');
        digits.remove_prefix(2);
    }
    if (letter != 'f') {
        const std::size_t exponent = std::min(digits.find_last_of(letter == 'a' ? "pP" : "eE"), digits.size());
        text.exponent = digits.substr(exponent);
        digits = digits.substr(0, exponent);
    }
    text.digits = digits;
    return text;
}

template <class Number>
std::int64_t Bound(const Conversion& conversion, Number number) {
    const char letter = Lower(conversion.letter);
    // Sign, "0x", first digit, point and exponent; the zeros that %g has in front of small numbers; or all
    // that most numbers have before their point.
    constexpr int kFrame = 16;
    constexpr Number kMostInFrame = 1e9;
    std::int64_t size = kFrame;
    if (letter == 'f' && std::abs(number) > kMostInFrame && std::isfinite(number)) {
        // From a power of 2 to one of 10, rounded up.
        size += std::ilogb(number) * 1234 / 4096;
    }
    const int least = letter == 'a' ? std::numeric_limits<Number>::digits : kDefaultPrecision;
    const int precision = conversion.precision.value < 0 ? least : conversion.precision.value;
    return size + (letter == 'g' && !conversion.alternate ? std::min(precision, kMostFraction<Number>) : precision);
}

}  // namespace

NumberText FloatingText(const Conversion& conversion, const Argument& argument, DigitBuffer& buffer) {
    return conversion.length == Length::kLongDouble ? Text(conversion, argument.longNumber, buffer)
                                                    : Text(conversion, argument.number, buffer);
}

std::int64_t FloatingBound(const Conversion& conversion, const Argument& argument) {
    return conversion.length == Length::kLongDouble ? Bound(conversion, argument.longNumber)
                                                    : Bound(conversion, argument.number);
}

}  // namespace Lum::Internal::Uc16
