// Compares texts and URIs: byte for byte as they print, nothing normalised.
#include <algorithm>
#include <compare>
#include <string>
#include <string_view>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"

namespace Lum {

int URI::Compare(const std::string& a, const std::string& b, bool caseSensitive) {
    return caseSensitive ? a.compare(b) : CompareIgnoringAsciiCase(a, b);
}

bool URI::IsOfType(StringProxy scheme) const { return EqualIgnoringAsciiCase(m_Scheme, scheme.m_Text); }

bool URI::operator==(const char* text) const { return ToString(false) == (text == nullptr ? "" : text); }
bool URI::operator==(StringProxy text) const { return ToString(false) == text.m_Text; }
bool URI::operator==(const URI& other) const { return ToString(false) == other.ToString(false); }

std::strong_ordering URI::operator<=>(const char* text) const {
    return ToString(false) <=> (text == nullptr ? "" : text);
}
std::strong_ordering URI::operator<=>(StringProxy text) const { return ToString(false) <=> text.m_Text; }
std::strong_ordering URI::operator<=>(const URI& other) const { return ToString(false) <=> other.ToString(false); }

}  // namespace Lum
