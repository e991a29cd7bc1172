// Texts of units in heap blocks of their exact size, and calls of the formatter.
#pragma once

#include <cstdarg>
#include <memory>
#include <string>
#include <string_view>

#include "Platform/Uc16/Uc16.h"

namespace Units {

/// A copy of a text, with its NUL or without.
class Exact {
public:
    explicit Exact(std::u16string_view text, bool terminated = true)
        : m_Units(new unsigned short[text.size() + (terminated ? 1 : 0)]) {
        text.copy(reinterpret_cast<char16_t*>(m_Units.get()), text.size());
        if (terminated) {
            m_Units[text.size()] = 0;
        }
    }
    [[nodiscard]] const unsigned short* Get() const { return m_Units.get(); }

private:
    std::unique_ptr<unsigned short[]> m_Units;
};

inline std::u16string ToString(const unsigned short* units, int size) { return {units, units + size}; }

/// What a buffer of `size` units gets, or of as many as are estimated (a negative size).
inline std::u16string FormatUpTo(int size, std::u16string_view format, va_list args) {
    const Exact exact(format);
    size = size < 0 ? uc16_estimateformatsize(exact.Get(), args) : size;
    if (size < 0) {
        return u"cannot be represented";
    }
    const std::unique_ptr<unsigned short[]> buffer(new unsigned short[static_cast<std::size_t>(size)]);
    const int length = uc16_vswprintf(buffer.get(), static_cast<std::size_t>(size), exact.Get(), args);
    const bool isWhole = size == 0 ? length == 0 : length < size && buffer[static_cast<std::size_t>(length)] == 0;
    return isWhole ? ToString(buffer.get(), length) : u"is not terminated";
}

inline std::u16string Format(const char16_t* format, ...) {
    va_list args;
    va_start(args, format);
    std::u16string result = FormatUpTo(-1, format, args);
    va_end(args);
    return result;
}

inline std::u16string FormatCut(int size, const char16_t* format, ...) {
    va_list args;
    va_start(args, format);
    std::u16string result = FormatUpTo(size, format, args);
    va_end(args);
    return result;
}

}  // namespace Units
