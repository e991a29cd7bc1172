// CString and ICU's UnicodeString: both hold UTF-16 units, so that nothing is converted and no unit changes, unpaired
// surrogates included. Needs ICU's headers; a program that includes it links ICU (icu-uc).
#pragma once

#include <string_view>

#include <unicode/unistr.h>

#include <Lum/CString.h>

namespace Lum {

/// A copy of the text.
[[nodiscard]] inline icu::UnicodeString ToUnicodeString(const CString& text) {
    return {AsChar16(text.GetAsUniCharStr()), text.GetLength()};
}

/// The text without a copy of its units. The alias stays good for the life of the process, whatever happens to `text`:
/// from now on the buffer counts as shared, so that the next write to `text` goes to a buffer of its own, and this one
/// never returns to its pool. ICU copies the units before it writes to the alias, and when the alias is assigned to
/// another string. A locked buffer is written in place and returns to its pool; its text is copied instead. What is
/// written through a pointer that GetBuffer gave before is seen in the alias.
[[nodiscard]] inline icu::UnicodeString AliasUnicodeString(const CString& text) {
    const CString sharer(text);
    return sharer.GetAsUniCharStr() == text.GetAsUniCharStr()
               ? icu::UnicodeString(true, AsChar16(text.GetAsUniCharStr()), text.GetLength())
               : ToUnicodeString(text);
}

/// A copy of the text; empty for a bogus string, and for one whose buffer is open for writing.
[[nodiscard]] inline CString FromUnicodeString(const icu::UnicodeString& text) {
    const char16_t* const units = text.getBuffer();
    return units == nullptr ? CString() : CString(units, text.length());
}

}  // namespace Lum
