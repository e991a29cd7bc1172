// Reads the number that a string begins with, as the "C" locale writes numbers.
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "Platform/CoreFoundation/CFString.h"
#include "Platform/CoreFoundation/CFStringObject.h"

namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// A number's sign, and what may be its digits.
struct Number {
    bool isNegative;
    std::string text;
};

/// What stands behind white space and a sign, as far as it is made of `characters`.
Number FindNumber(CFStringRef string, std::string_view characters) {
    std::span<const UniChar> units = CoreFoundation::String::From(string).Units();
    const auto unitIs = [](auto matches) {
        return [matches](UniChar unit) { return unit < 0x80 && matches(static_cast<char>(unit)); };
    };
    const auto first = std::find_if_not(units.begin(), units.end(), unitIs(IsSpace));
    units = units.subspan(static_cast<std::size_t>(first - units.begin()));
    const bool isSigned = !units.empty() && (units[0] == '-' || units[0] == '+');
    const bool isNegative = isSigned && units[0] == '-';
    units = units.subspan(isSigned ? 1 : 0);
    const auto last = std::find_if_not(units.begin(), units.end(),
                                       unitIs([&](char c) { return characters.find(c) != characters.npos; }));
    Number number{isNegative, std::string(static_cast<std::size_t>(last - units.begin()), '\0')};
    std::transform(units.begin(), last, number.text.begin(), [](UniChar unit) { return static_cast<char>(unit); });
    return number;
}

/// Whether a number that no double holds is too large, rather than too small.
bool IsHuge(std::string_view number) {
    const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
    const std::string_view digits = number.substr(0, mark);
    std::string_view exponent = number.substr(std::min(mark + 1, number.size()));
    exponent.remove_prefix(exponent.starts_with('+') ? 1 : 0);
    long long power = 0;
    if (std::from_chars(exponent.data(), exponent.data() + exponent.size(), power).ec ==
        std::errc::result_out_of_range) {
        // No text that fits in memory has the digits to outweigh it.
        return !exponent.starts_with('-');
    }
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = std::min(digits.find_first_of("123456789"), digits.size());
    return power + static_cast<long long>(point) > static_cast<long long>(first);
}

}  // namespace

std::int32_t CFStringGetIntValue(CFStringRef string) {
    const Number number = FindNumber(string, "0123456789");
    long long value = 0;
    const char* const end = number.text.data() + number.text.size();
    if (std::from_chars(number.text.data(), end, value).ec == std::errc::result_out_of_range) {
        value = std::numeric_limits<long long>::max();
    }
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<long long>(number.isNegative ? -value : value, Limits::min(), Limits::max()));
}

double CFStringGetDoubleValue(CFStringRef string) {
    const auto [isNegative, text] = FindNumber(string, "0123456789.eE+-");
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument || text.starts_with('-')) {  // a second sign is part of no number
        return 0;
    }
    if (error == std::errc::result_out_of_range) {
        value = IsHuge({text.data(), end}) ? std::numeric_limits<double>::infinity() : 0;
    }
    return isNegative ? -value : value;
}
