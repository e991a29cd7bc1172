// How many units a format can need: bounds for numbers, lengths for texts.
#include <algorithm>
#include <cstdint>
#include <limits>

#include "Platform/Uc16/FormatNumbers.h"
#include "Platform/Uc16/FormatTexts.h"
#include "Platform/Uc16/FormatWalk.h"
#include "Platform/Uc16/Uc16.h"

namespace {

using namespace Uc16;

/// Adds up in 64 bits, which no format is long enough to overflow.
class Estimate {
public:
    void Literal(const unsigned short* /*units*/, std::size_t count) { m_Units += static_cast<std::int64_t>(count); }
    void Convert(const Conversion& conversion, const Argument& argument) {
        m_Units += std::max<std::int64_t>(conversion.width.value, Content(conversion, argument));
    }
    [[nodiscard]] std::int64_t Units() const { return m_Units; }

private:
    static std::int64_t Content(const Conversion& conversion, const Argument& argument) {
        if (conversion.action == Action::kFloating) {
            return FloatingBound(conversion, argument);
        }
        return IsInteger(conversion, argument) ? IntegerBound(conversion)
                                               : static_cast<std::int64_t>(FieldText(conversion, argument).Size());
    }

    std::int64_t m_Units = 0;
};

}  // namespace

int uc16_estimateformatsize(const unsigned short* format, va_list args) {
    Estimate estimate;
    WalkFormat(format, args, estimate);
    return estimate.Units() < std::numeric_limits<int>::max() ? static_cast<int>(estimate.Units() + 1) : -1;
}
