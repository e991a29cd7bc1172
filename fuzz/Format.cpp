// Property: each conversion of a number gives what snprintf gives, alone and by position among others, and each of
// a text what a plain model gives; literals and unknown conversions are copied to the result.
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>

#include <Lum/CString.h>

#include "fuzz/Fuzz.h"

namespace {

/// A number of the input, or one at an edge of its type.
template <class Number>
Number TakeNumber(Choices& choices) {
    using Of = std::numeric_limits<Number>;
    const Number half = static_cast<Number>(-0.5), many = static_cast<Number>(999999.5);
    const Number edges[] = {0, half, many, Of::lowest(), Of::max(), Of::infinity(), Of::quiet_NaN(), Of::denorm_min()};
    const unsigned choice = choices.Below(2 * static_cast<unsigned>(std::size(edges)));
    return choice < std::size(edges) ? edges[choice] : choices.Take<Number>();
}

// What all conversions of one format choose from, each at its position.
struct Values {
    Choices& choices;
    int width = choices.Take<std::int16_t>() % 200, precision = choices.Take<std::int16_t>() % 200;
    int number = TakeNumber<int>(choices);
    long long longNumber = TakeNumber<long long>(choices);
    double real = TakeNumber<double>(choices);
    long double longReal = TakeNumber<double>(choices) / 3.0L;
    std::u16string text = std::u16string(choices.Below(100), std::max(choices.Take<char16_t>(), u'\1'));
};
// "l", "t" and "z" take 64 bits where pointers have as many.
constexpr std::string_view k64BitLengths = sizeof(void*) == 8 ? "qLjltz" : "qLj";
enum Position { kNone, kWidth, kPrecision, kNumber, kLongNumber, kReal, kLongReal, kText };

/// One conversion: its parts between position and letter, with stars by position and in order, and values.
struct Parts {
    std::string positioned, inOrder;
    int width = 0;
    int precision = -1;
    bool left = false;
};

Parts TakeParts(Choices& choices, const Values& values) {
    Parts parts;
    for (unsigned flags = choices.Below(4); flags > 0; --flags) {
        const char flag = choices.OneOf("-+ #0'");
        parts.left |= flag == '-';
        parts.positioned += flag;
    }
    parts.inOrder = parts.positioned;
    const auto measure = [&](Position position, int fromArgument) {
        const bool isStar = choices.Below(2) == 0;
        const int value = isStar ? fromArgument : choices.Take<std::uint16_t>() % 1500;
        parts.positioned += isStar ? "*" + std::to_string(position) + "$" : std::to_string(value);
        parts.inOrder += std::to_string(value);
        return value;
    };
    if (choices.Below(2) == 0) {
        parts.width = measure(kWidth, values.width);
        // A negative width begins with the flag it means.
        parts.left |= parts.width < 0;
        parts.width = std::abs(parts.width);
    }
    if (choices.Below(2) == 0) {
        const std::string before = parts.inOrder;
        parts.positioned += '.';
        parts.inOrder += '.';
        parts.precision = measure(kPrecision, values.precision);
        parts.inOrder = parts.precision < 0 ? before : parts.inOrder;
    }
    return parts;
}

std::string Printed(const std::string& format, auto value) {
    std::string text(16'384, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), format.c_str(), value)));
    return text;
}

/// A format and what it gives, put together a piece at a time.
struct Piecewise {
    const Values& values;
    std::u16string format, expected;

    void Add(Choices& choices) {
        switch (choices.Below(8)) {
            case 0:
                return AddNumber(choices, kNumber, choices.OneOf("hH "), "dioxXu", values.number);
            case 1:
                return AddNumber(choices, kLongNumber, choices.OneOf(k64BitLengths), "dioxXu", values.longNumber);
            case 2:
                return AddNumber(choices, kReal, choices.OneOf("l "), "eEfFgGaA", values.real);
            case 3:
                return AddNumber(choices, kLongReal, 'L', "eEfFgGaA", values.longReal);
            case 4:
                return AddText(TakeParts(choices, values));
            case 5:
                return AddPiece("%" + TakeParts(choices, values).positioned + choices.OneOf("yk!m~"));
            case 6:
                return AddPiece(std::string_view("%%"), std::string_view("%"));
            default:
                return AddPiece(std::u16string(1, std::max(choices.Take<char16_t>(), u'&')));
        }
    }
    /// Names every position, so that each has the type that is passed.
    void AddAll() {
        AddPrinted(kWidth, {}, "d", values.width);
        AddPrinted(kPrecision, {}, "d", values.precision);
        AddPrinted(kNumber, {}, "d", values.number);
        AddPrinted(kLongNumber, {}, "lld", values.longNumber);
        AddPrinted(kReal, {}, "g", values.real);
        AddPrinted(kLongReal, {}, "Lg", values.longReal);
        AddText({});
    }

private:
    void AddNumber(Choices& choices, Position position, char length, std::string_view letters, auto value) {
        const std::string lengthText = length == ' ' ? "" : length == 'H' ? "hh" : std::string(1, length);
        AddPrinted(position, TakeParts(choices, values), lengthText + choices.OneOf(letters), value);
    }
    void AddPrinted(Position position, const Parts& parts, const std::string& conversion, auto value) {
        const std::string inOrder = "%" + parts.inOrder + conversion, text = Printed(inOrder, value);
        CString alone;
        alone.Format(std::u16string(inOrder.begin(), inOrder.end()).c_str(), value);
        Require(std::u16string_view(alone) == std::u16string(text.begin(), text.end()));
        alone.LockBuffer();  // An unlocked buffer would stay, and a long run has millions.
        AddPiece("%" + std::to_string(position) + "$" + parts.positioned + conversion, text);
    }
    void AddText(const Parts& parts) {
        std::u16string text = values.text.substr(0, static_cast<std::size_t>(parts.precision));
        const std::size_t width = std::max(static_cast<std::size_t>(parts.width), text.size());
        text.insert(parts.left ? text.size() : 0, width - text.size(), u' ');
        AddPiece("%" + std::to_string(kText) + "$" + parts.positioned + "s", text);
    }
    void AddPiece(const auto& piece) { AddPiece(piece, piece); }
    void AddPiece(const auto& piece, const auto& result) {
        format.append(std::begin(piece), std::end(piece));
        expected.append(std::begin(result), std::end(result));
    }
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    const Values values{choices};
    Piecewise pieces{values, {}, {}};
    while (!choices.IsEmpty() && pieces.expected.size() < 20000) {
        pieces.Add(choices);
    }
    pieces.AddAll();
    CString string;
    string.Format(pieces.format.c_str(), values.width, values.precision, values.number, values.longNumber, values.real,
                  values.longReal, values.text.c_str());
    Require(std::u16string_view(string) == pieces.expected);
    string.LockBuffer();
    return 0;
}
