// Functions with the names and argument orders of another C runtime, as applications call them. Each
// says how it differs from what its name promises there.
//
// Texts end with a 0 unit or a NUL. Null is accepted, and returned wherever the result is a pointer.
#pragma once

#include <cstdarg>
#include <cstddef>

#include <Lum/Export.h>
#include <Lum/Units.h>

/// Changes the case of ASCII letters in place, whatever the locale, and returns `text`.
LUM_API unsigned short* CharUpper(unsigned short* text);
/// The same to lower case.
LUM_API unsigned short* CharLower(unsigned short* text);
inline char16_t* CharUpper(char16_t* text) { return Lum::AsChar16(CharUpper(Lum::AsUnits(text))); }
inline char16_t* CharLower(char16_t* text) { return Lum::AsChar16(CharLower(Lum::AsUnits(text))); }

/// Where `part` first stands in `text`, unit by unit; null if nowhere. An empty part stands at the
/// front, but in a double-byte script (IntlInfo) an empty text has nothing. The last argument is
/// ignored. Linear in practice.
LUM_API const unsigned short* _mbsstr(const unsigned short* text, Lum::UnitPointer part, int ignored = 0);  // NOLINT
inline const char16_t* _mbsstr(const char16_t* text, Lum::UnitPointer part, int ignored = 0) {              // NOLINT
    return Lum::AsChar16(_mbsstr(Lum::AsUnits(text), part, ignored));
}

/// Widens `count` bytes to as many units, without a terminator; both may lie in the same buffer. A byte
/// is taken as signed: 0xE9 becomes 0xFFE9. Nothing is written for a count below 1 or a null pointer.
LUM_API void inflateAsciiToLPTSTR(const char* bytes, unsigned short* units, int count);
inline void inflateAsciiToLPTSTR(const char* bytes, char16_t* units, int count) {
    inflateAsciiToLPTSTR(bytes, Lum::AsUnits(units), count);
}

#ifndef _WIN32  // There, the C library's own have the names that follow.

/// Writes the decimal text, cut to a buffer of `size` bytes, and returns `buffer`. The last argument is
/// a size and no radix: itoa(12345, buffer, 3) is "12". Nothing is written if it is not positive.
/// Compatibility: applications pass the size of their buffer.
LUM_API char* itoa(int value, char* buffer, int size);
/// Writes the decimal text, at most 21 bytes, if `radix` is 10, and otherwise nothing. Returns `buffer`.
LUM_API char* _ltoa(long value, char* buffer, int radix);  // NOLINT: reserved, but the name that is called

namespace Lum::Internal {

/// What sprintf_s is for every size.
LUM_API int FormatInto(char* buffer, std::size_t size, const char* format, std::va_list arguments);

}  // namespace Lum::Internal

/// Formats as printf does, and returns the length of the whole result. One longer than `Size` ends the
/// program with a message; of one as long as `Size` the last character gives way to the NUL, and `Size` is
/// returned.
template <std::size_t Size>
// NOLINTNEXTLINE(cert-dcl50-cpp): it is called as printf is
__attribute__((format(printf, 2, 3))) int sprintf_s(char (&buffer)[Size], const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int result = Lum::Internal::FormatInto(buffer, Size, format, arguments);
    va_end(arguments);
    return result;
}
extern template LUM_API int sprintf_s<8>(char (&buffer)[8], const char* format, ...);
extern template LUM_API int sprintf_s<256>(char (&buffer)[256], const char* format, ...);
#endif
