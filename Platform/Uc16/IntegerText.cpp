// Integers: sign, prefix and digits.
#include <algorithm>
#include <charconv>

#include "Platform/Uc16/FormatNumbers.h"

using namespace Lum::Internal;

namespace Lum::Internal::Uc16 {

namespace {

/// Writes the digits to the front of the buffer, none for 0, and returns their number.
std::size_t WriteDigits(DigitBuffer& buffer, std::uint64_t value, char letter) {
    if (value == 0) {
        return 0;
    }
    const int base = letter == 'o' ? 8 : letter == 'x' || letter == 'X' || letter == 'p' ? 16 : 10;
    char* const first = buffer.characters.data();
    char* const last = first + buffer.characters.size();
    // Short divisions are cheap, and most numbers are short.
    char* const end = value <= UINT32_MAX ? std::to_chars(first, last, static_cast<std::uint32_t>(value), base).ptr
                                          : std::to_chars(first, last, value, base).ptr;
    if (letter == 'X') {
        std::transform(first, end, first, [](char c) { return c >= 'a' ? static_cast<char>(c - 0x20) : c; });
    }
    return static_cast<std::size_t>(end - first);
}

/// What the conversion makes of the integer: its low bytes, with or without a sign.
std::int64_t Narrowed(const Conversion& conversion, std::int64_t value) {
    // Up and down again: the second shift brings copies of the sign, or zeros.
    const unsigned unused = 64 - 8 * IntegerSize(conversion.length);
    const std::uint64_t raised = static_cast<std::uint64_t>(value) << unused;
    return conversion.action == Action::kSigned ? static_cast<std::int64_t>(raised) >> unused
                                                : static_cast<std::int64_t>(raised >> unused);
}

}  // namespace

NumberText IntegerText(const Conversion& conversion, const Argument& argument, DigitBuffer& buffer) {
    const bool isPointer = conversion.action == Action::kPointer;
    const std::int64_t value = isPointer ? static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(argument.pointer))
                                         : Narrowed(conversion, argument.integer);
    const bool isNegative = conversion.action == Action::kSigned && value < 0;
    const std::uint64_t magnitude =
        isNegative ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);

    NumberText text;
    if (isNegative) {
        text.AddPrefix('-');
    } else if (conversion.action != Action::kUnsigned && (conversion.plus || conversion.space)) {
        text.AddPrefix(conversion.plus ? '+' : ' ');
    }
    if (isPointer || (conversion.alternate && magnitude > 0 && (conversion.letter | 0x20) == 'x')) {
        text.AddPrefix('0');
        text.AddPrefix(conversion.letter == 'X' ? 'X' : 'x');
    }
    text.digits = {buffer.characters.data(), WriteDigits(buffer, magnitude, conversion.letter)};
    const int size = static_cast<int>(text.digits.size());
    text.leadingZeros = std::max(conversion.precision.value < 0 ? 1 : conversion.precision.value, size) - size;
    if (conversion.letter == 'o' && conversion.alternate && text.leadingZeros == 0) {
        text.leadingZeros = 1;
    }
    text.mayFillWithZeros = conversion.precision.value < 0;
    return text;
}

std::int64_t IntegerBound(const Conversion& conversion) {
    // Octal digits, one for the flag among them; decimal ones and a sign; or hexadecimal ones and "+0x".
    const bool isShort = conversion.action != Action::kPointer && IntegerSize(conversion.length) <= 4;
    const std::int64_t digits = isShort ? 12 : 23;
    return std::max<std::int64_t>(digits, std::int64_t{conversion.precision.value} + 3);
}

}  // namespace Lum::Internal::Uc16
