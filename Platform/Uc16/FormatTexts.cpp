// Finds the text that a conversion stands for, and its length.
#include "Platform/Uc16/FormatTexts.h"

#include <algorithm>
#include <cstring>

#include "Source/Base/UnitText.h"

using namespace Lum::Internal;

namespace Lum::Internal::Uc16 {

namespace {

/// A capital letter alone is narrow; a length modifier decides for either.
bool IsNarrow(const Conversion& conversion) {
    return conversion.length == Length::kShort ||
           (conversion.length == Length::kNone && (conversion.letter == 'C' || conversion.letter == 'S'));
}

std::size_t LengthUpTo(const AnyUnit* text, std::size_t limit) {
    if (limit == kNoLimit) {
        return CountUnits(text);
    }
    std::size_t length = 0;
    while (length < limit && text[length] != 0) {
        ++length;
    }
    return length;
}

}  // namespace

FieldText::FieldText(const Conversion& conversion, const Argument& argument) {
    if (conversion.action == Action::kUnit) {
        SetUnit(conversion, argument.integer);
    } else if (conversion.action == Action::kPointer) {
        SetAscii("(nil)");
    } else {
        SetString(conversion, argument.pointer);
    }
}

void FieldText::SetAscii(std::string_view text) {
    std::copy(text.begin(), text.end(), m_Own.begin());
    m_Units = m_Own.data();
    m_Size = text.size();
}

void FieldText::SetUnit(const Conversion& conversion, std::int64_t character) {
    m_Units = m_Own.data();
    if (IsNarrow(conversion)) {
        const std::array<char, 2> text{static_cast<char>(character), '\0'};
        m_Size = NarrowToUnits(text.data(), m_Own.size(), m_Own.data());
    } else {
        m_Own[0] = static_cast<unsigned short>(character);
        m_Size = 1;
    }
}

void FieldText::SetString(const Conversion& conversion, const void* text) {
    constexpr std::string_view kNull = "(null)";
    const std::size_t limit =
        conversion.precision.value < 0 ? kNoLimit : static_cast<std::size_t>(conversion.precision.value);
    if (text == nullptr) {
        SetAscii(kNull.substr(0, limit));
    } else if (IsNarrow(conversion)) {
        m_Narrow = static_cast<const char*>(text);
        m_Size = NarrowToUnits(m_Narrow, limit, nullptr);
    } else {
        m_Units = static_cast<const AnyUnit*>(text);
        m_Size = LengthUpTo(m_Units, limit);
    }
}

std::size_t FieldText::Write(unsigned short* to, std::size_t count) const {
    if (m_Narrow != nullptr) {
        return NarrowToUnits(m_Narrow, count, to);
    }
    if (count > 0) {
        std::memcpy(to, m_Units, count * sizeof *to);
    }
    return count;
}

}  // namespace Lum::Internal::Uc16
