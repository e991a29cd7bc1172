// Writes a format into a buffer: fields with their padding, cut where the buffer ends.
#include <algorithm>
#include <cstring>
#include <limits>

#include "Platform/Uc16/FormatNumbers.h"
#include "Platform/Uc16/FormatTexts.h"
#include "Platform/Uc16/FormatWalk.h"
#include "Platform/Uc16/Uc16.h"

namespace {

using namespace Uc16;

class Output {
public:
    Output(unsigned short* buffer, std::size_t room) : m_At(buffer), m_Room(room) {}

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
    /// Takes that many units of the room, or what is left of it.
    std::size_t Fitting(std::size_t count) {
        count = std::min(count, m_Room);
        m_Room -= count;
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
        const std::size_t written = text.Write(m_At, std::min(text.Size(), m_Room));
        m_At += Fitting(written);
        m_Room = written < text.Size() ? 0 : m_Room;  // Nothing may stand where half a character would not fit.
        Fill(' ', conversion.left ? conversion.width.value - size : 0);
    }

    unsigned short* m_At;
    std::size_t m_Room;
    DigitRoom m_Digits;
};

}  // namespace

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
