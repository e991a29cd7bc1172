// Floating-point numbers: the standard library's exact conversions where they give what printf gives, the
// C library itself, held to its "C" locale, for the rest.
#include <algorithm>
#include <cfenv>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>

#include <locale.h>  // NOLINT: newlocale and uselocale are POSIX, not C

#include "Platform/Uc16/FormatNumbers.h"

namespace Uc16 {

namespace {

/// No number of the type has more digits that are not 0 behind its point, in whatever form.
template <class Number>
constexpr int kMostFraction = std::numeric_limits<Number>::digits - std::numeric_limits<Number>::min_exponent;

constexpr int kDefaultPrecision = 6;

char Lower(char letter) { return static_cast<char>(letter | 0x20); }
bool IsUpper(char letter) { return (letter & 0x20) == 0; }

std::string_view ViaStandardLibrary(double magnitude, char letter, int precision, DigitRoom& room) {
    const auto form = Lower(letter) == 'f'   ? std::chars_format::fixed
                      : Lower(letter) == 'e' ? std::chars_format::scientific
                                             : std::chars_format::general;
    char* const first = room.characters.data();
    char* const last = std::to_chars(first, first + room.characters.size(), magnitude, form, precision).ptr;
    if (IsUpper(letter)) {
        std::replace(first, last, 'e', 'E');
    }
    return {first, static_cast<std::size_t>(last - first)};
}

/// The C library's formatting, while this thread's locale is "C".
template <class Number>
std::string_view ViaCLibrary(Number number, const Conversion& conversion, int precision, DigitRoom& room) {
    static const locale_t kCLocale = newlocale(LC_ALL_MASK, "C", locale_t{});
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
        return static_cast<std::size_t>(std::max(std::snprintf(to, size, format.data(), precision, number), 0));
    };
    const locale_t before = uselocale(kCLocale);
    const char* text = room.characters.data();
    const std::size_t size = print(room.characters.data(), room.characters.size());
    if (size >= room.characters.size()) {
        room.more.resize(size + 1);
        print(room.more.data(), room.more.size());
        text = room.more.data();
    }
    uselocale(before);
    return {text, size};
}

template <class Number>
std::string_view Digits(Number number, const Conversion& conversion, int precision, DigitRoom& room) {
    if constexpr (sizeof(Number) == sizeof(double)) {
        // Left to the C library: points without digits behind them, hexadecimal forms, whose first digit is
        // free, and roundings that only printf follows.
        if (Lower(conversion.letter) != 'a' && !conversion.alternate && std::fegetround() == FE_TONEAREST) {
            return ViaStandardLibrary(std::abs(number), conversion.letter, precision, room);
        }
    }
    std::string_view text = ViaCLibrary(number, conversion, precision, room);
    text.remove_prefix(std::signbit(number) ? 1 : 0);
    return text;
}

template <class Number>
NumberText Text(const Conversion& conversion, Number number, DigitRoom& room) {
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
    // Digits that are known to be zeros are not asked for, nor stored.
    const int asked = std::min(precision, kMostFraction<Number>);
    if (letter != 'g' || conversion.alternate) {
        text.trailingZeros = precision - asked;
    }
    std::string_view digits = Digits(number, conversion, asked, room);
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

NumberText FloatingText(const Conversion& conversion, const Argument& argument, DigitRoom& room) {
    return conversion.length == Length::kLongDouble ? Text(conversion, argument.longNumber, room)
                                                    : Text(conversion, argument.number, room);
}

std::int64_t FloatingBound(const Conversion& conversion, const Argument& argument) {
    return conversion.length == Length::kLongDouble ? Bound(conversion, argument.longNumber)
                                                    : Bound(conversion, argument.number);
}

}  // namespace Uc16
