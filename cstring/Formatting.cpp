// Formats into the buffer that a text of the estimated size gets.
//
// The format and its arguments may be texts of this very string: the result is made where it disturbs
// none of them, and the old buffer is released last.
#include <Lum/CString.h>

#include <memory>

#include "Platform/Uc16/Uc16.h"
#include "Source/Base/UnitSearch.h"
#include "cstring/Buffer.h"

using namespace Lum::Internal;

namespace {

/// Formats into `size` units, the 0 included, and returns the length: up to the first 0 unit.
int FormatInto(unsigned short* units, int size, const unsigned short* format, std::va_list arguments) {
    const int written = uc16_vswprintf(units, static_cast<std::size_t>(size), format, arguments);
    const int length = std::clamp(written, 0, size - 1);
    // A unit that was formatted may have been 0.
    const unsigned short* const end = FindUnit(units, units + length, 0);
    return end == nullptr ? length : static_cast<int>(end - units);
}

struct VaEnd {
    std::va_list& arguments;
    ~VaEnd() { va_end(arguments); }
};

}  // namespace

void CString::FormatV(Lum::UnitPointer format, std::va_list arguments) {
    const unsigned short* const text = format == nullptr ? &afxChNil : static_cast<const unsigned short*>(format);
    const int size = uc16_estimateformatsize(text, arguments);
    if (size < 0) {
        throw std::bad_alloc();
    }
    if (Data()->refCount >= 2 || size > Data()->allocLength) {
        CString result;
        result.m_pchChars = UnitsOf(NewBuffer(std::max(size, GetLength())));
        // Locked, so that it is freed if formatting throws.
        result.LockBuffer();
        SetFirstLength(result.Data(), FormatInto(result.m_pchChars, size, text, arguments));
        result.UnlockBuffer();
        Release();
        swap(*this, result);
        return;
    }
    constexpr int most = 512;
    unsigned short scratch[most];  // NOLINT: set up to what is read
    const auto larger =
        std::unique_ptr<unsigned short[]>(size > most ? new unsigned short[static_cast<std::size_t>(size)] : nullptr);
    unsigned short* const units = larger ? larger.get() : scratch;
    AssignCopy(FormatInto(units, size, text, arguments), units);
}

// Variable arguments are what these operations are about.
// NOLINTBEGIN(cert-dcl50-cpp)
void CString::Format(const unsigned short* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const VaEnd end{arguments};
    FormatV(format, arguments);
}

void CString::Format(const char16_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const VaEnd end{arguments};
    FormatV(format, arguments);
}

void CString::Format(unsigned int formatId, ...) {
    std::va_list arguments;
    va_start(arguments, formatId);
    const VaEnd end{arguments};
    CString format;
    format.LoadString(formatId);
    FormatV(format, arguments);
}

// Compatibility: these do nothing. Applications call them on texts that have to stay as they are.
void CString::FormatMessage(const unsigned short* /*format*/, ...) {}
void CString::FormatMessage(const char16_t* /*format*/, ...) {}
void CString::FormatMessage(unsigned int /*formatId*/, ...) {}
// NOLINTEND(cert-dcl50-cpp)
