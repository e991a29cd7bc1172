// One conversion of a format: its parts after C17 7.21.6.1, with the positions of POSIX, and what it takes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Lum::Internal::Uc16 {

enum class Action : std::uint8_t {
    kUnknown,
    kPercent,
    kSigned,
    kUnsigned,
    kFloating,
    kUnit,
    kString,
    kPointer,
    kCount
};
enum class Length : std::uint8_t { kNone, kCharacter, kShort, kLong, kLongLong, kMax, kSize, kDifference, kLongDouble };
/// What an argument occupies; integers of one size are of one kind.
enum class ArgumentKind : std::uint8_t { kNone, kInt, kInt64, kDouble, kLongDouble, kPointer };

/// Where a width or precision comes from, if not from the format: 0 nowhere, kNextArgument, or a position.
constexpr int kNextArgument = -1;

struct Measure {
    int value;
    int argument = 0;
};

/// Numbers that no int holds are the largest int.
struct Conversion {
    Measure width{0};
    Measure precision{-1};  // negative: none given
    int position = 0;       // 0: the argument that is next
    Action action = Action::kUnknown;
    Length length = Length::kNone;
    char letter = '\0';
    bool left = false;
    bool plus = false;
    bool space = false;
    bool alternate = false;
    bool zero = false;
};

inline constexpr std::array<Action, 128> kActions = [] {
    std::array<Action, 128> actions{};
    const auto set = [&](const char* letters, Action action) {
        for (; *letters != '\0'; ++letters) {
            actions[static_cast<unsigned char>(*letters)] = action;
        }
    };
    set("%", Action::kPercent);
    set("di", Action::kSigned);
    set("uoxX", Action::kUnsigned);
    set("eEfFgGaA", Action::kFloating);
    set("cC", Action::kUnit);
    set("sS", Action::kString);
    set("p", Action::kPointer);
    set("n", Action::kCount);
    return actions;
}();

inline Action ActionOf(unsigned short unit) { return unit < kActions.size() ? kActions[unit] : Action::kUnknown; }

/// The way of ParseConversion where there is more than a letter.
const unsigned short* ParseParts(const unsigned short* at, Conversion& conversion);

/// Reads what stands behind a percent sign into a fresh conversion and returns where that ends, which is
/// behind the unit that makes it unknown, or at the terminator.
inline const unsigned short* ParseConversion(const unsigned short* at, Conversion& conversion) {
    const Action action = ActionOf(*at);
    if (action == Action::kUnknown) {
        return ParseParts(at, conversion);
    }
    conversion.action = action;
    conversion.letter = static_cast<char>(*at);
    return at + 1;
}

/// The size of a signed, unsigned or count conversion's integer in bytes.
inline unsigned IntegerSize(Length length) {
    switch (length) {
        case Length::kCharacter:
            return sizeof(char);
        case Length::kShort:
            return sizeof(short);
        case Length::kLong:
            return sizeof(long);
        case Length::kLongLong:
        case Length::kLongDouble:
        case Length::kMax:
            return sizeof(long long);
        case Length::kSize:
            return sizeof(std::size_t);
        case Length::kDifference:
            return sizeof(std::ptrdiff_t);
        default:
            return sizeof(int);
    }
}

/// The kind of what a conversion takes; kNone for the percent sign and what is unknown.
inline ArgumentKind KindOf(const Conversion& conversion) {
    switch (conversion.action) {
        case Action::kSigned:
        case Action::kUnsigned:
            return IntegerSize(conversion.length) > 4 ? ArgumentKind::kInt64 : ArgumentKind::kInt;
        case Action::kFloating:
            return conversion.length == Length::kLongDouble ? ArgumentKind::kLongDouble : ArgumentKind::kDouble;
        case Action::kUnit:
            return ArgumentKind::kInt;
        case Action::kString:
        case Action::kPointer:
        case Action::kCount:
            return ArgumentKind::kPointer;
        default:
            return ArgumentKind::kNone;
    }
}

}  // namespace Lum::Internal::Uc16
