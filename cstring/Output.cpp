// Prints a string as UTF-8. What is no UTF-16, an unpaired surrogate, shows as U+FFFD.
#include <Lum/CString.h>

#include <ostream>
#include <string>

namespace {

bool IsLeading(unsigned short unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsTrailing(unsigned short unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// RFC 3629, section 3.
void AppendUtf8(std::string& out, char32_t scalar) {
    const auto append = [&](char32_t byte) { out.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    const auto appendTail = [&](int bits) { append(0x80 | ((scalar >> bits) & 0x3F)); };
    if (scalar < 0x80) {
        append(scalar);
    } else if (scalar < 0x800) {
        append(0xC0 | (scalar >> 6));
        appendTail(0);
    } else if (scalar < 0x10000) {
        append(0xE0 | (scalar >> 12));
        appendTail(6);
        appendTail(0);
    } else {
        append(0xF0 | (scalar >> 18));
        appendTail(12);
        appendTail(6);
        appendTail(0);
    }
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const CString& text) {
    std::string bytes;
    for (const unsigned short* unit = text.begin(); unit != text.end(); ++unit) {
        char32_t scalar = *unit;
        if (IsLeading(*unit) && IsTrailing(unit[1])) {
            scalar = 0x10000 + ((scalar & 0x3FF) << 10) + (unit[1] & 0x3FFU);
            ++unit;
        } else if (IsLeading(*unit) || IsTrailing(*unit)) {
            scalar = 0xFFFD;
        }
        AppendUtf8(bytes, scalar);
    }
    return out << bytes;
}

void PrintTo(const CString& text, std::ostream* out) { *out << '"' << text << '"'; }
