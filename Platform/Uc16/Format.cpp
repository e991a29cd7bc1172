// Estimates and writes a format. One walk over the format serves both, so that the two cannot disagree.
#include <algorithm>
#include <cstdint>
#include <limits>

#include "Platform/Uc16/FormatArguments.h"
#include "Platform/Uc16/FormatConversion.h"
#include "Platform/Uc16/FormatNumbers.h"
#include "Platform/Uc16/FormatTexts.h"
#include "Platform/Uc16/Uc16.h"

using namespace Lum::Internal;

namespace {

using namespace Uc16;

/// Calls `sink.Literal(units, count)` for what stands in the format and `sink.Convert(conversion,
/// argument)` for each conversion of a number or text, in their order.
template <class Sink>
void WalkFormat(const unsigned short* format, va_list args, Sink& sink) {
    Arguments arguments(args);
    const auto literal = [&](const unsigned short* first, const unsigned short* last) {
        if (first != last) {
            sink.Literal(first, static_cast<std::size_t>(last - first));
        }
    };
    const unsigned short* at = format;
    while (*at != 0) {
        const unsigned short* const run = at;
        while (*at != '%' && *at != 0) {
            ++at;
        }
        literal(run, at);
        if (*at == 0) {
            return;
        }
        const unsigned short* const start = at;
        Conversion conversion;
        Argument argument;  // set by Take
        at = ParseConversion(start + 1, conversion);
        if (conversion.action == Action::kPercent) {
            literal(at - 1, at);
        } else if (conversion.action == Action::kUnknown || !arguments.Take(conversion, argument, start)) {
            literal(start, at);
        } else if (conversion.action != Action::kCount) {
            sink.Convert(conversion, argument);
        }
    }
}

// ---- How many units it can need: bounds for numbers, lengths for texts ----------------------------

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

// ---- Writing: fields with their padding, cut where the buffer ends --------------------------------

class Output {
public:
    Output(unsigned short* buffer, std::size_t capacity) : m_At(buffer), m_Left(capacity) {}

    void Literal(const unsigned short* units, std::size_t count) {
        for (std::size_t i = Fitting(count); i > 0; --i) {
            *m_At++ = *units++;
        }
    }
    void Convert(const Conversion& conversion, const Argument& argument) {
        if (conversion.action == Action::kFloating) {
            PutNumber(conversion, FloatingText(conversion, argument, m_Digits));
        } else if (IsInteger(conversion, argument)) {
            PutNumber(conversion, IntegerText(conversion, argument, m_Digits));
        } else {
            PutText(conversion, FieldText(conversion, argument));
        }
    }
    [[nodiscard]] unsigned short* End() const { return m_At; }

private:
    /// Reserves that many units of the buffer, or what is left of it, and returns how many.
    std::size_t Fitting(std::size_t count) {
        count = std::min(count, m_Left);
        m_Left -= count;
        return count;
    }
    void Put(std::string_view ascii) {
        const std::size_t count = Fitting(ascii.size());
        for (const char c : ascii.substr(0, count)) {
            *m_At++ = static_cast<unsigned char>(c);
        }
    }
    void Fill(char c, std::int64_t count) {
        if (count > 0) {
            m_At = std::fill_n(m_At, Fitting(static_cast<std::size_t>(count)), static_cast<unsigned char>(c));
        }
    }

    void PutNumber(const Conversion& conversion, const NumberText& text) {
        const auto size = static_cast<std::int64_t>(text.prefixSize + text.digits.size() + text.exponent.size());
        const std::int64_t padding = conversion.width.value - size - text.leadingZeros - text.trailingZeros;
        if (padding <= 0 && (text.leadingZeros | text.trailingZeros) == 0) [[likely]] {
            Put({text.prefix.data(), text.prefixSize});
            Put(text.digits);
            Put(text.exponent);
            return;
        }
        const bool withZeros = conversion.zero && !conversion.left && text.mayFillWithZeros;
        Fill(' ', conversion.left || withZeros ? 0 : padding);
        Put({text.prefix.data(), text.prefixSize});
        Fill('0', withZeros ? padding : 0);
        Fill('0', text.leadingZeros);
        Put(text.digits);
        Fill('0', text.trailingZeros);
        Put(text.exponent);
        Fill(' ', conversion.left ? padding : 0);
    }
    void PutText(const Conversion& conversion, const FieldText& text) {
        const auto size = static_cast<std::int64_t>(text.Size());
        Fill(' ', conversion.left ? 0 : conversion.width.value - size);
        const std::size_t written = text.Write(m_At, std::min(text.Size(), m_Left));
        m_At += Fitting(written);
        m_Left = written < text.Size() ? 0 : m_Left;  // Nothing may stand where half a character would not fit.
        Fill(' ', conversion.left ? conversion.width.value - size : 0);
    }

    unsigned short* m_At;
    std::size_t m_Left;
    DigitBuffer m_Digits;
};

}  // namespace

int uc16_estimateformatsize(const unsigned short* format, va_list args) {
    Estimate estimate;
    WalkFormat(format, args, estimate);
    return estimate.Units() < std::numeric_limits<int>::max() ? static_cast<int>(estimate.Units() + 1) : -1;
}

int uc16_vswprintf(unsigned short* buffer, std::size_t size, const unsigned short* format, va_list args) {
    if (size == 0) {
        return 0;
    }
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    Output output(buffer, std::min(size - 1, kMost));
    WalkFormat(format, args, output);
    *output.End() = 0;
    return static_cast<int>(output.End() - buffer);
}
