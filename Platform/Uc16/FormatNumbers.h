// The text of numbers, as the C library writes it in the "C" locale, and how long it can be.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "Platform/Uc16/FormatArguments.h"
#include "Platform/Uc16/FormatConversion.h"

namespace Lum::Internal::Uc16 {

/// A number in the order of its parts. A field's spaces stand around them, its zeros behind the prefix.
struct NumberText {
    std::array<char, 3> prefix;  // sign, "0x"
    std::uint8_t prefixSize = 0;
    bool mayFillWithZeros = false;
    int leadingZeros = 0;
    std::string_view digits;
    int trailingZeros = 0;
    std::string_view exponent;

    void AddPrefix(char c) { prefix[prefixSize++] = c; }
};

/// Where digits are written. It has to outlive the NumberText that refers to them.
struct DigitBuffer {
    std::array<char, 1536> characters;  // enough for every digit of every double
    std::string more;                   // for a long double that needs more
};

/// Whether the conversion gives an integer's text: a signed, unsigned, or pointer one, but no null pointer.
inline bool IsInteger(const Conversion& conversion, const Argument& argument) {
    return conversion.action == Action::kSigned || conversion.action == Action::kUnsigned ||
           (conversion.action == Action::kPointer && argument.pointer != nullptr);
}
/// The text of such a conversion.
NumberText IntegerText(const Conversion& conversion, const Argument& argument, DigitBuffer& buffer);
/// The text of a floating conversion.
NumberText FloatingText(const Conversion& conversion, const Argument& argument, DigitBuffer& buffer);

/// Upper bounds of the lengths of the texts above, found without making them.
std::int64_t IntegerBound(const Conversion& conversion);
std::int64_t FloatingBound(const Conversion& conversion, const Argument& argument);

}  // namespace Lum::Internal::Uc16
