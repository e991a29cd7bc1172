// Strings as sequences of UTF-16 code units, and the numbers that they begin with. Conversions from and to
// bytes are in CFStringBytes.cpp.
#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "Platform/CoreFoundation/CFObject.h"

using namespace Lum::Internal;

using CoreFoundation::String;

namespace {

std::span<const UniChar> Cut(std::span<const UniChar> units, CFRange range) {
    const auto size = static_cast<CFIndex>(units.size());
    const CFIndex from = std::clamp<CFIndex>(range.location, 0, size);
    const CFIndex length = std::clamp<CFIndex>(range.length, 0, size - from);
    return units.subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(length));
}

bool IsText(const UniChar* units, CFIndex count) { return count == 0 || (count > 0 && units != nullptr); }

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The sign of a number, and the text that has its digits.
struct Number {
    bool isNegative;
    std::string text;
};

/// The text after white space and a sign, up to the first unit that is none of `characters`.
Number FindNumber(CFStringRef string, std::string_view characters) {
    std::span<const UniChar> units = String::From(string).Units();
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

}  // namespace

CFStringRef CoreFoundation::CopyOf(std::span<const UniChar> units) {
    std::unique_ptr<UniChar[]> copy(new UniChar[units.size()]);
    std::copy(units.begin(), units.end(), copy.get());
    return (new String(std::move(copy), units.size()))->Ref();
}

CFTypeID CFStringGetTypeID() { return static_cast<CFTypeID>(CoreFoundation::Kind::String); }

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef /*allocator*/, const UniChar* units, CFIndex count) {
    return IsText(units, count) ? CoreFoundation::CopyOf({units, static_cast<std::size_t>(count)}) : nullptr;
}

CFStringRef CFStringCreateWithCharactersNoCopy(CFAllocatorRef /*allocator*/, const UniChar* units, CFIndex count,
                                               CFAllocatorRef contentsDeallocator) {
    if (!IsText(units, count) || contentsDeallocator != kCFAllocatorNull) {
        return nullptr;
    }
    return (new String(std::span(units, static_cast<std::size_t>(count))))->Ref();
}

CFStringRef CFStringCreateWithSubstring(CFAllocatorRef /*allocator*/, CFStringRef string, CFRange range) {
    return CoreFoundation::CopyOf(Cut(String::From(string).Units(), range));
}

CFIndex CFStringGetLength(CFStringRef string) { return static_cast<CFIndex>(String::From(string).Units().size()); }

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
    const std::span<const UniChar> units = Cut(String::From(string).Units(), range);
    std::copy(units.begin(), units.end(), buffer);
}

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
    if (text.starts_with('-') || text.starts_with('+')) {  // a second sign is part of no number
        return 0;
    }
    // Not std::from_chars, which some standard libraries lack for doubles. This locale is a part of the C library.
    static const locale_t kCLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    const double value = strtod_l(text.c_str(), nullptr, kCLocale);
    return isNegative ? -value : value;
}
