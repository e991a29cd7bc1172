// The grammar of a conversion, in its order: position, flags, width, precision, length, letter.
#include "Platform/Uc16/FormatConversion.h"

#include <limits>

using namespace Lum::Internal;

namespace Lum::Internal::Uc16 {

namespace {

constexpr bool IsDigit(unsigned short unit) { return unit >= '0' && unit <= '9'; }

const unsigned short* ReadNumber(const unsigned short* at, int& number) {
    constexpr int kMost = std::numeric_limits<int>::max();
    for (number = 0; IsDigit(*at); ++at) {
        const int digit = *at - '0';
        number = number > (kMost - digit) / 10 ? kMost : number * 10 + digit;
    }
    return at;
}

const unsigned short* ReadFlags(const unsigned short* at, Conversion& conversion) {
    for (;; ++at) {
        switch (*at) {
            case '-':
                conversion.left = true;
                break;
            case '+':
                conversion.plus = true;
                break;
            case ' ':
                conversion.space = true;
                break;
            case '#':
                conversion.alternate = true;
                break;
            case '0':
                conversion.zero = true;
                break;
            case '\'':
                break;  // The "C" locale does not group digits.
            default:
                return at;
        }
    }
}

/// Reads digits, or a star with or without a position.
const unsigned short* ReadMeasure(const unsigned short* at, Measure& measure) {
    if (*at != '*') {
        return IsDigit(*at) ? ReadNumber(at, measure.value) : at;
    }
    measure.argument = kNextArgument;
    int position = 0;
    const unsigned short* const end = ReadNumber(++at, position);
    if (*end == '$' && position > 0) {
        measure.argument = position;
        return end + 1;
    }
    return at;
}

const unsigned short* ReadLength(const unsigned short* at, Length& length) {
    switch (*at) {
        case 'h':
            length = at[1] == 'h' ? Length::kCharacter : Length::kShort;
            return at + (at[1] == 'h' ? 2 : 1);
        case 'l':
            length = at[1] == 'l' ? Length::kLongLong : Length::kLong;
            return at + (at[1] == 'l' ? 2 : 1);
        case 'q':
            length = Length::kLongLong;
            return at + 1;
        case 'j':
            length = Length::kMax;
            return at + 1;
        case 'z':
            length = Length::kSize;
            return at + 1;
        case 't':
            length = Length::kDifference;
            return at + 1;
        case 'L':
            length = Length::kLongDouble;
            return at + 1;
        default:
            return at;
    }
}

/// Whether the length modifier belongs to the conversion.
bool Fits(Action action, Length length) {
    switch (action) {
        case Action::kFloating:
            return length == Length::kNone || length == Length::kLong || length == Length::kLongDouble;
        case Action::kUnit:
        case Action::kString:
            return length == Length::kNone || length == Length::kShort || length == Length::kLong;
        case Action::kPointer:
            return length == Length::kNone;
        default:
            return true;
    }
}

}  // namespace

const unsigned short* ParseParts(const unsigned short* at, Conversion& conversion) {
    if (*at >= '1' && *at <= '9') {
        int number = 0;
        const unsigned short* const end = ReadNumber(at, number);
        if (*end == '$') {
            conversion.position = number;
            at = end + 1;
        }
    }
    at = ReadFlags(at, conversion);
    at = ReadMeasure(at, conversion.width);
    if (*at == '.') {
        conversion.precision.value = 0;
        at = ReadMeasure(at + 1, conversion.precision);
    }
    at = ReadLength(at, conversion.length);
    if (*at == 0) {
        return at;
    }
    const Action action = ActionOf(*at);
    if (Fits(action, conversion.length)) {
        conversion.action = action;
        conversion.letter = static_cast<char>(*at);
    }
    return at + 1;
}

}  // namespace Lum::Internal::Uc16
