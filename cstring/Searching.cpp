// Comparison, searching, and the parts of a text that are found by position or by sets of units.
#include <Lum/CString.h>

#include "Platform/Uc16/Uc16.h"
#include "Source/Base/UnitSearch.h"
#include "cstring/Buffer.h"

using namespace Lum::Internal;

namespace {

unsigned short FoldCase(unsigned short unit) noexcept {
    return unit >= 'A' && unit <= 'Z' ? static_cast<unsigned short>(unit | 0x20) : unit;
}

int IndexOf(const unsigned short* text, const unsigned short* found) noexcept {
    return found == nullptr ? -1 : static_cast<int>(found - text);
}

const unsigned short* SetOrEmpty(const unsigned short* set) noexcept { return set == nullptr ? &afxChNil : set; }

}  // namespace

// ---- Comparison ---------------------------------------------------------------------------------

bool CString::Equals(const unsigned short* units, int length) const noexcept {
    return GetLength() == length && EqualUnits(m_pchChars, units, static_cast<std::size_t>(length));
}

int CString::Compare(const CString& other) const noexcept {
    return CompareUnits(m_pchChars, static_cast<std::size_t>(GetLength()), other.m_pchChars,
                        static_cast<std::size_t>(other.GetLength()));
}

int CString::Compare(const unsigned short* text) const {
    const std::size_t size = text == nullptr ? 0 : CountUnits(text);
    return CompareUnits(m_pchChars, static_cast<std::size_t>(GetLength()), text, size);
}

int CString::CompareNoCase(Lum::UnitPointer text) const {
    const unsigned short* other = SetOrEmpty(text);
    for (const unsigned short unit : *this) {
        if (*other == 0) {
            return 1;
        }
        const unsigned short a = FoldCase(unit);
        const unsigned short b = FoldCase(*other);
        if (a != b) {
            return a < b ? -1 : 1;
        }
        ++other;
    }
    return *other == 0 ? 0 : -1;
}

// ---- Searching ----------------------------------------------------------------------------------

int CString::FindFirst(unsigned short unit, int start) const noexcept {
    const int length = GetLength();
    if (start >= length) {
        return -1;
    }
    // The 0 behind the text is part of what is searched.
    return IndexOf(m_pchChars, FindUnit(m_pchChars + std::max(start, 0), m_pchChars + length + 1, unit));
}

int CString::FindLast(unsigned short unit) const noexcept {
    return IndexOf(m_pchChars, FindLastUnit(m_pchChars, m_pchChars + GetLength() + 1, unit));
}

int CString::Find(Lum::UnitPointer text, int start) const {
    const int length = GetLength();
    if (start > length) {
        return -1;
    }
    const std::size_t size = text == nullptr ? 0 : CountUnits(text);
    return IndexOf(m_pchChars, FindUnits(m_pchChars + std::max(start, 0), m_pchChars + length, text, size));
}

int CString::FindOneOf(Lum::UnitPointer set) const {
    return IndexOf(m_pchChars, uc16_wcspbrk(m_pchChars, SetOrEmpty(set)));
}

// ---- Parts by position and by sets --------------------------------------------------------------

CString CString::Piece(std::size_t first, std::size_t count) const {
    if (first == 0 && count == static_cast<std::size_t>(GetLength())) {
        return *this;
    }
    if (CStringData* const data = NewPiece(Data(), first, count)) {
        return {Made(), data};
    }
    return {m_pchChars + first, static_cast<int>(count)};
}

CString CString::Left(int count) const { return Mid(0, count); }

CString CString::Right(int count) const {
    const int kept = std::clamp(count, 0, GetLength());
    return Mid(GetLength() - kept, kept);
}

CString CString::Mid(int first, int count) const {
    const int length = GetLength();
    if (first > length) {
        return {};
    }
    const int start = std::max(first, 0);
    const int kept = std::clamp(count, 0, length - start);
    return Piece(static_cast<std::size_t>(start), static_cast<std::size_t>(kept));
}

CString CString::Mid(int first) const {
    // Before either is clamped: a negative first leaves a count that is more than enough.
    return Mid(first, first <= 0 ? GetLength() : GetLength() - first);
}

CString CString::SpanIncluding(Lum::UnitPointer set) const {
    return Piece(0, uc16_wcsspn(m_pchChars, SetOrEmpty(set)));
}

CString CString::SpanExcluding(Lum::UnitPointer set) const {
    return Piece(0, uc16_wcscspn(m_pchChars, SetOrEmpty(set)));
}

CString CString::Tokenize(Lum::UnitPointer delimiters, int& position) const {
    if (delimiters == nullptr) {
        return *this;
    }
    const int length = GetLength();
    if (position < length) {
        const auto start = static_cast<std::size_t>(std::max(position, 0));
        const std::size_t first = start + uc16_wcsspn(m_pchChars + start, delimiters);
        if (first < static_cast<std::size_t>(length)) {
            const std::size_t count = uc16_wcscspn(m_pchChars + first, delimiters);
            // In a function of its own, where the token can be made in its place before the position moves.
            return [&] {
                CString token = Piece(first, count);
                position = static_cast<int>(std::min<std::size_t>(first + count + 1, std::numeric_limits<int>::max()));
                return token;
            }();
        }
    }
    position = -1;
    return {};
}
