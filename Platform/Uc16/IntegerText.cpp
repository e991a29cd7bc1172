// Integers by hand: two decimal digits at a step, from the last.
#include <algorithm>

#include "Platform/Uc16/FormatNumbers.h"

namespace Uc16 {

namespace {

constexpr std::array<char, 200> kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// Each writes digits in front of `end`, none for 0, and returns where they begin.
template <class Number>
char* WriteDecimal(char* end, Number value) {
    for (; value >= 100; value /= 100) {
        const char* const pair = &kPairs[static_cast<std::size_t>(value % 100) * 2];
        *--end = pair[1];
        *--end = pair[0];
    }
    if (value >= 10) {
        *--end = kPairs[static_cast<std::size_t>(value) * 2 + 1];
        value /= 10;
    }
    if (value > 0) {
        *--end = static_cast<char>('0' + value);
    }
    return end;
}

char* WriteBits(char* end, std::uint64_t value, unsigned bitsOfDigit, const char* digits) {
    for (; value > 0; value >>= bitsOfDigit) {
        *--end = digits[value & ((1U << bitsOfDigit) - 1)];
    }
    return end;
}

char* WriteDigits(char* end, std::uint64_t value, char letter) {
    switch (letter) {
        case 'o':
            return WriteBits(end, value, 3, "01234567");
        case 'p':
        case 'x':
            return WriteBits(end, value, 4, "0123456789abcdef");
        case 'X':
            return WriteBits(end, value, 4, "0123456789ABCDEF");
        default:
            // Short divisions are cheap, and most numbers are short.
            return value <= UINT32_MAX ? WriteDecimal(end, static_cast<std::uint32_t>(value))
                                       : WriteDecimal(end, value);
    }
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

NumberText IntegerText(const Conversion& conversion, const Argument& argument, DigitRoom& room) {
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
    char* const end = room.characters.data() + 64;
    const char* const first = WriteDigits(end, magnitude, conversion.letter);
    text.digits = {first, static_cast<std::size_t>(end - first)};
    const int size = static_cast<int>(end - first);
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

}  // namespace Uc16
