// Property: a format of positions gives, piece by piece, what snprintf gives for numbers and a plain model
// for texts; literals and unknown conversions stand as they stand.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include <Lum/CString.h>

#include "Fuzz.h"

namespace {

/// The input as a row of choices; zeros when it has ended.
class Choices {
public:
    Choices(const std::uint8_t* data, std::size_t size) : m_Data(data), m_Left(size) {}
    [[nodiscard]] bool IsEmpty() const { return m_Left == 0; }

    template <class Value>
    Value Take() {
        Value value{};
        const std::size_t size = std::min(sizeof value, m_Left);
        std::memcpy(&value, m_Data, size);
        m_Data += size;
        m_Left -= size;
        return value;
    }
    unsigned Below(unsigned limit) { return Take<std::uint8_t>() % limit; }
    char OneOf(std::string_view letters) { return letters[Below(static_cast<unsigned>(letters.size()))]; }

private:
    const std::uint8_t* m_Data;
    std::size_t m_Left;
};

// What all conversions of one format choose from, each at its position.
struct Values {
    int width;
    int precision;
    int number;
    long long longNumber;
    double real;
    long double longReal;
    std::u16string text;
};
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
        parts.positioned += '.';
        const std::size_t before = parts.inOrder.size();
        parts.inOrder += '.';
        parts.precision = measure(kPrecision, values.precision);
        if (parts.precision < 0) {
            parts.inOrder.resize(before);
        }
    }
    return parts;
}

template <class Value>
std::string Printed(const Parts& parts, const std::string& conversion, Value value) {
    const std::string format = "%" + parts.inOrder + conversion;
    std::string text(static_cast<std::size_t>(std::snprintf(nullptr, 0, format.c_str(), value)) + 1, '\0');
    std::snprintf(text.data(), text.size(), format.c_str(), value);
    text.pop_back();
    return text;
}

/// A format and what it gives, put together a piece at a time.
class Piecewise {
public:
    explicit Piecewise(const Values& values) : m_Values(values) {}

    void Add(Choices& choices) {
        switch (choices.Below(8)) {
            case 0:
                AddNumber(choices, kNumber, choices.OneOf("hH "), "dioxXu", m_Values.number);
                break;
            case 1:
                AddNumber(choices, kLongNumber, 'q', "dioxXu", m_Values.longNumber);
                break;
            case 2:
                AddNumber(choices, kReal, choices.OneOf("l "), "eEfFgGaA", m_Values.real);
                break;
            case 3:
                AddNumber(choices, kLongReal, 'L', "eEfFgGaA", m_Values.longReal);
                break;
            case 4:
                AddText(TakeParts(choices, m_Values));
                break;
            case 5:
                AddBoth("%" + TakeParts(choices, m_Values).positioned + choices.OneOf("yk!m~"));
                break;
            case 6:
                m_Format += u"%%";
                m_Expected += u'%';
                break;
            default: {
                const auto unit = choices.Take<char16_t>();
                AddBoth(std::u16string(1, unit == 0 || unit == u'%' ? u'.' : unit));
            }
        }
    }
    /// Names every position, so that each has the type that is passed.
    void AddAll() {
        AddPrinted(kWidth, {}, "d", m_Values.width);
        AddPrinted(kPrecision, {}, "d", m_Values.precision);
        AddPrinted(kNumber, {}, "d", m_Values.number);
        AddPrinted(kLongNumber, {}, "lld", m_Values.longNumber);
        AddPrinted(kReal, {}, "g", m_Values.real);
        AddPrinted(kLongReal, {}, "Lg", m_Values.longReal);
        AddText({});
    }
    [[nodiscard]] const std::u16string& Format() const { return m_Format; }
    [[nodiscard]] const std::u16string& Expected() const { return m_Expected; }

private:
    void AddConversion(Position position, const std::string& rest, const std::u16string& expected) {
        const std::string text = "%" + std::to_string(position) + "$" + rest;
        m_Format.append(text.begin(), text.end());
        m_Expected += expected;
    }
    template <class Value>
    void AddNumber(Choices& choices, Position position, char length, std::string_view letters, Value value) {
        const std::string lengthText = length == ' ' ? "" : length == 'H' ? "hh" : std::string(1, length);
        AddPrinted(position, TakeParts(choices, m_Values), lengthText + choices.OneOf(letters), value);
    }
    template <class Value>
    void AddPrinted(Position position, const Parts& parts, const std::string& conversion, Value value) {
        const std::string text = Printed(parts, conversion, value);
        AddConversion(position, parts.positioned + conversion, std::u16string(text.begin(), text.end()));
    }
    void AddText(const Parts& parts) {
        std::u16string text = m_Values.text.substr(0, static_cast<std::size_t>(parts.precision));
        const std::size_t width = std::max(static_cast<std::size_t>(parts.width), text.size());
        text.insert(parts.left ? text.size() : 0, width - text.size(), u' ');
        AddConversion(kText, parts.positioned + "s", text);
    }
    template <class Text>
    void AddBoth(const Text& text) {
        m_Format.append(text.begin(), text.end());
        m_Expected.append(text.begin(), text.end());
    }

    const Values& m_Values;
    std::u16string m_Format, m_Expected;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    Values values{
        choices.Take<std::int16_t>() % 200,
        choices.Take<std::int16_t>() % 200,
        choices.Take<int>(),
        choices.Take<long long>(),
        choices.Take<double>(),
        static_cast<long double>(choices.Take<double>()) / 3,
        std::u16string(choices.Below(100), static_cast<char16_t>(1 + choices.Take<std::uint16_t>() % 0xFFFF))};
    Piecewise pieces(values);
    while (!choices.IsEmpty() && pieces.Expected().size() < 20000) {
        pieces.Add(choices);
    }
    pieces.AddAll();
    CString string;
    string.Format(pieces.Format().c_str(), values.width, values.precision, values.number, values.longNumber,
                  values.real, values.longReal, values.text.c_str());
    Require(std::u16string_view(string) == pieces.Expected());
    return 0;
}
