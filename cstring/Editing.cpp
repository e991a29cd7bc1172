// Operations that change the text, in place where its buffer is large enough and not shared.
#include <Lum/CString.h>

#include <functional>
#include <memory>

#include "Source/Base/Ascii.h"
#include "Source/Base/UnitSearch.h"
#include "cstring/Buffer.h"

using namespace Lum::Internal;

namespace {

bool IsInside(const unsigned short* units, const unsigned short* text, std::size_t length) noexcept {
    const std::less<> before;
    return !before(units, text) && !before(text + length, units);
}

/// The buffer for a text that is to be `length` units long: its own, or a new one. The new one has the capacity
/// that a copy of the text would have if that is enough, or else the one for the exact length.
CStringData* BufferForEdit(CStringData* data, int length) {
    if (data->refCount < 2 && length <= data->allocLength) {
        return data;
    }
    const bool isCopyEnough = data->refCount >= 2 && length <= CapacityFor(data->dataLength);
    return NewBuffer(isCopyEnough ? data->dataLength : length);
}

}  // namespace

void CString::SetUnit(int index, unsigned short unit) {
    CopyBeforeWrite();
    if (index >= 0 && index < GetLength()) {
        m_pchChars[index] = unit;
    }
}

// ---- Removing and inserting by position ---------------------------------------------------------

void CString::Cut(std::size_t first, std::size_t count) {
    if (count == 0) {
        return;
    }
    const auto length = static_cast<std::size_t>(GetLength());
    MoveUnits(m_pchChars + first, m_pchChars + first + count, length - first - count);
    SetLength(Data(), static_cast<int>(length - count));
}

int CString::Delete(int index, int count) {
    const int length = GetLength();
    const int first = std::max(index, 0);
    if (count >= 1 && first < length) {
        CopyBeforeWrite();
        Cut(static_cast<std::size_t>(first), static_cast<std::size_t>(std::min(count, length - first)));
    }
    return length;
}

int CString::Insert(int index, Lum::UnitPointer text) { return InsertUnits(index, text, LengthOf(text)); }

int CString::InsertUnits(int index, const unsigned short* units, int length) {
    CStringData* const data = Data();
    const int before = data->dataLength;
    if (length == 0) {
        return before;
    }
    const int total = AddLengths(before, length);
    const auto position = static_cast<std::size_t>(std::clamp(index, 0, before));
    const auto count = static_cast<std::size_t>(length);
    const std::size_t tail = static_cast<std::size_t>(before) - position;
    CStringData* const target = BufferForEdit(data, total);
    unsigned short* const gap = UnitsOf(target) + position;
    if (target != data) {
        CopyUnits(UnitsOf(target), m_pchChars, position);
        CopyUnits(gap, units, count);
        CopyUnits(gap + count, m_pchChars + position, tail);
        SetFirstLength(target, total);
        Adopt(target);
        return total;
    }
    DropHostString(data);
    // Of units that stand in this very text, those behind the gap move with it.
    std::size_t unmoved = count;
    std::size_t shift = 0;
    if (IsInside(units, m_pchChars, static_cast<std::size_t>(before))) {
        const auto offset = static_cast<std::size_t>(units - m_pchChars);
        unmoved = offset < position ? std::min(count, position - offset) : 0;
        shift = count;
    }
    MoveUnits(gap + count, gap, tail);
    MoveUnits(gap, units, unmoved);
    MoveUnits(gap + unmoved, units + unmoved + shift, count - unmoved);
    SetLength(data, total);
    return total;
}

// ---- Replacing and removing by value ------------------------------------------------------------

int CString::ReplaceUnit(unsigned short from, unsigned short to) {
    if (from == to) {
        return 0;
    }
    CopyBeforeWrite();
    unsigned short* const end = m_pchChars + GetLength();
    int count = 0;
    // Branch-free, so that the compiler makes vector code of it.
    for (unsigned short* unit = m_pchChars; unit != end; ++unit) {
        const bool isOne = *unit == from;
        count += isOne ? 1 : 0;
        *unit = isOne ? to : *unit;
    }
    return count;
}

int CString::RemoveUnit(unsigned short unit) {
    CopyBeforeWrite();
    const int length = GetLength();
    const unsigned short* const end = std::remove(m_pchChars, m_pchChars + length, unit);
    SetLength(Data(), static_cast<int>(end - m_pchChars));
    return length - GetLength();
}

namespace {

/// A text to look for or to put in: the caller's, or a copy if it is part of the text that changes.
class Operand {
public:
    Operand(const unsigned short* units, const unsigned short* text, int textLength)
        : m_Units(units), m_Size(units == nullptr ? 0 : CountUnits(units)) {
        if (m_Size != 0 && IsInside(units, text, static_cast<std::size_t>(textLength))) {
            m_Copy.reset(new unsigned short[m_Size]);
            CopyUnits(m_Copy.get(), units, m_Size);
            m_Units = m_Copy.get();
        }
    }
    [[nodiscard]] const unsigned short* Units() const noexcept { return m_Units; }
    [[nodiscard]] std::size_t Size() const noexcept { return m_Size; }

private:
    const unsigned short* m_Units;
    std::size_t m_Size;
    std::unique_ptr<unsigned short[]> m_Copy;
};

/// The positions at which a text stands. They are found once to count them, and the first kKept are kept for
/// the replacing.
class Matches {
public:
    Matches(const unsigned short* text, int length, const Operand& wanted) : m_Wanted(wanted) {
        const unsigned short* const end = text + length;
        for (const unsigned short* at = text; (at = Find(at, end)) != nullptr; at += wanted.Size()) {
            if (m_Count < kKept) {
                m_Positions[m_Count] = static_cast<int>(at - text);
            }
            ++m_Count;
        }
    }
    [[nodiscard]] std::size_t Count() const noexcept { return m_Count; }

    /// The position of match `index`; the match before it ends at `from`.
    [[nodiscard]] const unsigned short* At(std::size_t index, const unsigned short* text, const unsigned short* from,
                                           const unsigned short* end) const noexcept {
        return index < kKept ? text + m_Positions[index] : Find(from, end);
    }

private:
    static constexpr std::size_t kKept = 1024;

    [[nodiscard]] const unsigned short* Find(const unsigned short* first, const unsigned short* last) const noexcept {
        return m_Wanted.Size() == 1 ? FindUnit(first, last, *m_Wanted.Units())
                                    : FindUnits(first, last, m_Wanted.Units(), m_Wanted.Size());
    }

    const Operand& m_Wanted;
    std::size_t m_Count = 0;
    int m_Positions[kKept];  // NOLINT: set up to m_Count
};

/// Writes the text [text, text + length) with its matches replaced to `to`: into another buffer if `isApart`,
/// else into the text's own, at its own position or before it.
void WriteReplaced(unsigned short* to, const unsigned short* text, int length, const Matches& matches,
                   std::size_t wantedSize, const Operand& replacement, bool isApart) {
    constexpr std::size_t shortest = 128;
    const unsigned short* const end = text + length;
    const unsigned short* from = text;
    for (std::size_t i = 0; i < matches.Count(); ++i) {
        const unsigned short* const match = matches.At(i, text, from, end);
        const auto kept = static_cast<std::size_t>(match - from);
        if (isApart && kept < shortest) {
            CopyShortUnits(to, from, kept);
        } else {
            MoveUnits(to, from, to == from ? 0 : kept);
        }
        to += kept;
        CopyShortUnits(to, replacement.Units(), replacement.Size());
        to += replacement.Size();
        from = match + wantedSize;
    }
    MoveUnits(to, from, to == from ? 0 : static_cast<std::size_t>(end - from));
}

}  // namespace

int CString::Replace(Lum::UnitPointer from, Lum::UnitPointer to, int /*ignored*/) {
    const int length = GetLength();
    const Operand wanted(from, m_pchChars, length);
    if (wanted.Size() == 0) {
        return 0;
    }
    const Matches matches(m_pchChars, length, wanted);
    if (matches.Count() == 0) {
        return 0;
    }
    const Operand replacement(to, m_pchChars, length);
    const auto count = static_cast<long long>(matches.Count());
    const long long growth =
        count * (static_cast<long long>(replacement.Size()) - static_cast<long long>(wanted.Size()));
    const int total = AddLengths(length, growth);
    CStringData* const data = Data();
    CStringData* const target = BufferForEdit(data, total);
    if (target != data) {
        WriteReplaced(UnitsOf(target), m_pchChars, length, matches, wanted.Size(), replacement, true);
        SetFirstLength(target, total);
        Adopt(target);
        return static_cast<int>(count);
    }
    DropHostString(data);
    const unsigned short* text = m_pchChars;
    if (growth > 0) {
        // Moved to the end of its future extent first, so that writing never overtakes reading.
        MoveUnits(m_pchChars + growth, m_pchChars, static_cast<std::size_t>(length));
        text += growth;
    }
    WriteReplaced(m_pchChars, text, length, matches, wanted.Size(), replacement, false);
    SetLength(data, total);
    return static_cast<int>(count);
}

// ---- Order and case -----------------------------------------------------------------------------

void CString::MakeReverse() {
    CopyBeforeWrite();
    std::reverse(m_pchChars, m_pchChars + GetLength());
}

namespace {

using CaseChange = void(unsigned short*, std::size_t) noexcept;

/// Changes the case of all but what a double-byte script takes for two bytes of one character.
void ChangeCase(unsigned short* units, std::size_t size, CaseChange change) {
    if (!IntlInfo::s_doubleByte) {
        change(units, size);
        return;
    }
    for (std::size_t i = 0; i < size; ++i) {
        if (IntlInfo::IsLeadByte(static_cast<unsigned char>(units[i] & 0xFF))) {
            ++i;
        } else {
            change(units + i, 1);
        }
    }
}

}  // namespace

void CString::MakeUpper() {
    CopyBeforeWrite();
    ChangeCase(m_pchChars, static_cast<std::size_t>(GetLength()), ToAsciiUpper);
}

void CString::MakeLower() {
    CopyBeforeWrite();
    ChangeCase(m_pchChars, static_cast<std::size_t>(GetLength()), ToAsciiLower);
}

// ---- Trimming -----------------------------------------------------------------------------------

namespace {

// Compatibility: the no-break space is trimmed at the end only; at the beginning it is indentation to applications.
constexpr unsigned short kWhiteLeft[] = {9, 10, 11, 12, 13, 32};
constexpr unsigned short kWhiteRight[] = {9, 10, 11, 12, 13, 32, 160};

}  // namespace

void CString::TrimLeftOf(const unsigned short* set, int size) {
    CopyBeforeWrite();
    const unsigned short* const first = std::find_if(
        begin(), end(), [&](unsigned short unit) { return std::find(set, set + size, unit) == set + size; });
    Cut(0, static_cast<std::size_t>(first - m_pchChars));
}

void CString::TrimRightOf(const unsigned short* set, int size) {
    CopyBeforeWrite();
    int length = GetLength();
    while (length > 0 && std::find(set, set + size, m_pchChars[length - 1]) != set + size) {
        --length;
    }
    SetLength(Data(), length);
}

void CString::TrimLeft() { TrimLeftOf(kWhiteLeft, static_cast<int>(std::size(kWhiteLeft))); }

void CString::TrimRight() { TrimRightOf(kWhiteRight, static_cast<int>(std::size(kWhiteRight))); }

void CString::Trim() {
    TrimLeft();
    TrimRight();
}

void CString::TrimLeft(Lum::UnitPointer set) { TrimLeftOf(set, LengthOf(set)); }

void CString::TrimRight(Lum::UnitPointer set) { TrimRightOf(set, LengthOf(set)); }
