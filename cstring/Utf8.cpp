// Strings as UTF-8: conversion through the transcoder, from the texts of URIs, and printing. This file is above
// strings, transcoder and URIs, so that none of these has to know the others.
#include <ostream>
#include <string>
#include <string_view>

#include <Lum/CString.h>
#include <Lum/Transcoder.h>
#include <Lum/URI.h>

#include "Source/Base/UnitText.h"

using namespace Lum::Internal;

CString CString::FromUTF8(std::string_view utf8) { return CString(Lum::Transcoder::asUTF16(std::string(utf8))); }

std::string CString::ToUTF8() const { return Lum::Transcoder::asUTF8(std::u16string(*this)); }

namespace Lum {

URI::StringProxy::operator CString() const { return Transcoder::asUTF16(m_Text).c_str(); }

}  // namespace Lum

// ---- Printing, in which an unpaired surrogate shows as U+FFFD -------------------------------------

namespace {

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
        if (IsLeadSurrogate(*unit) && IsTrailSurrogate(unit[1])) {
            scalar = FromSurrogates(*unit, unit[1]);
            ++unit;
        } else if (IsSurrogate(*unit)) {
            scalar = 0xFFFD;
        }
        AppendUtf8(bytes, scalar);
    }
    return out << bytes;
}

void PrintTo(const CString& text, std::ostream* out) { *out << '"' << text << '"'; }
