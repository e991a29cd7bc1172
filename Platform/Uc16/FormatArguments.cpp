// Fetches arguments. Positions need the kinds of all arguments before the first can be fetched.
#include "Platform/Uc16/FormatArguments.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

using namespace Lum::Internal;

namespace Lum::Internal::Uc16 {

namespace {

/// Whether the conversion takes width and precision by position exactly where it takes its argument so.
bool HasOneOrder(const Conversion& conversion) {
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
        if (kind != ArgumentKind::kNone && conversion.position > 0 && HasOneOrder(conversion)) {
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
    const Order order = conversion.position > 0 ? Order::kByPosition : Order::kAsPassed;
    if (!HasOneOrder(conversion) || (m_Order != Order::kUndecided && m_Order != order)) {
        return false;
    }
    if (order == Order::kByPosition) {
        if (m_Order == Order::kUndecided) {
            ReadPositions(rest);
        }
        const auto isThere = [&](const Measure& measure) {
            return measure.argument == 0 || Has(measure.argument, ArgumentKind::kInt);
        };
        if (!Has(conversion.position, kind) || !isThere(conversion.width) || !isThere(conversion.precision)) {
            // The order is decided all the same: what has been fetched cannot be fetched again.
            m_Order = order;
            return false;
        }
    }
    m_Order = order;
    if (conversion.width.argument != 0) {
        SetWidth(conversion, TakeMeasure(conversion.width));
    }
    if (conversion.precision.argument != 0) {
        conversion.precision.value = TakeMeasure(conversion.precision);
    }
    TakeFrom(conversion.position, kind, argument);
    return true;
}

}  // namespace Lum::Internal::Uc16
