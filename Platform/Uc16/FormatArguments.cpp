// Fetches arguments. Positions need the kinds of all arguments before the first can be fetched.
#include "Platform/Uc16/FormatArguments.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace Uc16 {

namespace {

/// Whether the conversion takes its measures in the manner in which it takes its argument.
bool IsOfOneManner(const Conversion& conversion) {
    const auto agrees = [&](const Measure& measure) {
        return measure.argument == 0 || (measure.argument > 0) == (conversion.position > 0);
    };
    return agrees(conversion.width) && agrees(conversion.precision);
}

/// A width from an argument: a negative one is a flag and a width.
void SetWidth(Conversion& conversion, int width) {
    conversion.left |= width < 0;
    // The lowest int has no positive; the highest is as far from being possible.
    conversion.width.value = std::abs(std::max(width, -std::numeric_limits<int>::max()));
}

}  // namespace

bool Arguments::Has(int position, ArgumentKind kind) const {
    return position <= kMostPositions && m_Kinds[static_cast<std::size_t>(position - 1)] == kind;
}

void Arguments::NoteKind(int position, ArgumentKind kind) {
    if (position > 0 && position <= kMostPositions) {
        ArgumentKind& noted = m_Kinds[static_cast<std::size_t>(position - 1)];
        noted = noted == ArgumentKind::kNone ? kind : noted;
    }
}

void Arguments::ReadPositions(const unsigned short* rest) {
    m_Kinds.fill(ArgumentKind::kNone);
    while (*rest != 0) {
        if (*rest++ != '%') {
            continue;
        }
        Conversion conversion;
        rest = ParseConversion(rest, conversion);
        const ArgumentKind kind = KindOf(conversion);
        if (kind != ArgumentKind::kNone && conversion.position > 0 && IsOfOneManner(conversion)) {
            NoteKind(conversion.position, kind);
            NoteKind(conversion.width.argument, ArgumentKind::kInt);
            NoteKind(conversion.precision.argument, ArgumentKind::kInt);
        }
    }
    std::size_t count = m_Kinds.size();
    while (count > 0 && m_Kinds[count - 1] == ArgumentKind::kNone) {
        --count;
    }
    for (std::size_t i = 0; i < count; ++i) {
        Next(m_Kinds[i], m_Values[i]);
    }
}

void Arguments::TakeFrom(int position, ArgumentKind kind, Argument& argument) {
    if (position > 0) {
        argument = m_Values[static_cast<std::size_t>(position - 1)];
    } else {
        Next(kind, argument);
    }
}

int Arguments::TakeMeasure(const Measure& measure) {
    Argument argument;
    TakeFrom(measure.argument, ArgumentKind::kInt, argument);
    return static_cast<int>(argument.integer);
}

bool Arguments::TakeSeveral(Conversion& conversion, Argument& argument, const unsigned short* rest) {
    const ArgumentKind kind = KindOf(conversion);
    const Manner manner = conversion.position > 0 ? Manner::kByPosition : Manner::kInOrder;
    if (!IsOfOneManner(conversion) || (m_Manner != Manner::kUndecided && m_Manner != manner)) {
        return false;
    }
    if (manner == Manner::kByPosition) {
        if (m_Manner == Manner::kUndecided) {
            ReadPositions(rest);
        }
        const auto isThere = [&](const Measure& measure) {
            return measure.argument == 0 || Has(measure.argument, ArgumentKind::kInt);
        };
        if (!Has(conversion.position, kind) || !isThere(conversion.width) || !isThere(conversion.precision)) {
            // The manner is decided all the same: what has been fetched cannot be fetched again.
            m_Manner = manner;
            return false;
        }
    }
    m_Manner = manner;
    if (conversion.width.argument != 0) {
        SetWidth(conversion, TakeMeasure(conversion.width));
    }
    if (conversion.precision.argument != 0) {
        conversion.precision.value = TakeMeasure(conversion.precision);
    }
    TakeFrom(conversion.position, kind, argument);
    return true;
}

}  // namespace Uc16
