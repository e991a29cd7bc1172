// The functions that only have another C runtime's names.
#include <Lum/RuntimeNames.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <Lum/CString.h>

#include "Source/Base/Ascii.h"
#include "Source/Base/UnitSearch.h"

using namespace Lum::Internal;

unsigned short* CharUpper(unsigned short* text) {
    if (text != nullptr) {
        ToAsciiUpper(text, CountUnits(text));
    }
    return text;
}

unsigned short* CharLower(unsigned short* text) {
    if (text != nullptr) {
        ToAsciiLower(text, CountUnits(text));
    }
    return text;
}

const unsigned short* _mbsstr(const unsigned short* text, Lum::UnitPointer part, int /*ignored*/) {  // NOLINT
    if (text == nullptr || part == nullptr || (IntlInfo::s_doubleByte && *text == 0)) {
        return nullptr;
    }
    return FindUnits(text, text + CountUnits(text), part, CountUnits(part));
}

void inflateAsciiToLPTSTR(const char* bytes, unsigned short* units, int count) {
    // From the end, so that no byte is overwritten before it is read where both begin at one place.
    for (int i = std::max(count, 0) - 1; i >= 0 && bytes != nullptr && units != nullptr; --i) {
        units[i] = static_cast<unsigned short>(static_cast<signed char>(bytes[i]));  // NOLINT: as documented
    }
}

#ifndef _WIN32

char* itoa(int value, char* buffer, int size) {
    if (buffer != nullptr && size > 0) {
        std::snprintf(buffer, static_cast<std::size_t>(size), "%d", value);
    }
    return buffer;
}

char* _ltoa(long value, char* buffer, int radix) {  // NOLINT: reserved, but the name that is called
    constexpr std::size_t kLongest = sizeof "-9223372036854775808";
    if (buffer != nullptr && radix == 10) {
        std::snprintf(buffer, kLongest, "%ld", value);
    }
    return buffer;
}

int Lum::Internal::FormatInto(char* buffer, std::size_t size, const char* format, std::va_list arguments) {
    const int result = std::vsnprintf(buffer, size, format, arguments);
    if (result < 0) {
        buffer[0] = '\0';
    } else if (static_cast<std::size_t>(result) > size) {
        std::fprintf(stderr, "%s:%u: failed assertion `%s'\n", __FILE__, unsigned{__LINE__}, "result <= (int)_DstSize");
        std::fflush(stderr);
        std::abort();
    }
    return result;
}

template LUM_API int sprintf_s<8>(char (&buffer)[8], const char* format, ...);
template LUM_API int sprintf_s<256>(char (&buffer)[256], const char* format, ...);

#endif
