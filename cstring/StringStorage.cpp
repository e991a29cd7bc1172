// Construction, assignment, access to the buffer, and the primitives that editing is built on.
//
// Every operation reads the old buffer before it releases it: the text that an operation copies from may be in
// that buffer, and releasing a locked buffer frees it.
#include <Lum/CString.h>

#include <cstdint>

#include "Source/Base/UnitSearch.h"
#include "cstring/Buffer.h"

using namespace Lum::Internal;

int CString::LengthOf(const unsigned short* text) { return text == nullptr ? 0 : AsLength(CountUnits(text)); }

int CString::LengthOf(std::u16string_view text) { return AsLength(text.size()); }

// ---- Construction and assignment ----------------------------------------------------------------

CString::CString(const unsigned short* text) : m_pchChars(EmptyText()) {
    if (const auto number = reinterpret_cast<std::uintptr_t>(text); number < 0x10000) {
        if (number != 0) {
            LoadString(static_cast<unsigned int>(number));
        }
    } else if (const int length = LengthOf(text); length != 0) {
        CStringData* const data = NewBuffer(length);
        CopyUnits(UnitsOf(data), text, static_cast<std::size_t>(length));
        m_pchChars = UnitsOf(data);
    }
}

CString::CString(const unsigned short* units, int length) : m_pchChars(EmptyText()) {
    if (CStringData* const data = NewShortCopy(units, length)) {
        m_pchChars = UnitsOf(data);
    } else {
        Begin(units, length);
    }
}

[[gnu::noinline]] void CString::Begin(const unsigned short* units, int length) {
    if (length > 0) {
        if (units == nullptr) {
            AllocBuffer(length);
        } else {
            CStringData* const data = NewBuffer(length);
            CopyUnits(UnitsOf(data), units, static_cast<std::size_t>(length));
            m_pchChars = UnitsOf(data);
        }
    }
}

CString::CString(std::u16string_view text) : CString(text.data(), LengthOf(text)) {}

CString::CString(Joined /*joined*/, const unsigned short* a, int lengthA, const unsigned short* b, int lengthB)
    : m_pchChars(EmptyText()) {
    ConcatCopy(lengthA, a, lengthB, b);
}

void CString::Fill(unsigned short unit, int repeat) {
    if (repeat > 0) {
        CStringData* const data = NewBuffer(repeat);
        std::fill_n(UnitsOf(data), repeat, unit);
        m_pchChars = UnitsOf(data);
    }
}

void CString::AssignShared(const CString& other) { AssignCopy(other.GetLength(), other.m_pchChars); }

// Comparing the buffers covers assignment to itself as well.
CString& CString::operator=(const CString& other) {  // NOLINT(bugprone-unhandled-self-assignment)
    if (m_pchChars == other.m_pchChars) {
        return *this;
    }
    const bool isLocked = Data()->refCount < 0 && m_pchChars != EmptyText();
    if (isLocked || other.Data()->refCount < 0) {
        AssignShared(other);
    } else {
        Release();
        m_pchChars = other.m_pchChars;
        CountUp(Data());
    }
    return *this;
}

CString& CString::operator=(const unsigned short* text) {
    AssignCopy(LengthOf(text), text);
    return *this;
}

// ---- Access to the buffer -----------------------------------------------------------------------

unsigned short* CString::GetBuffer(int minLength) {
    CStringData* const data = Data();
    if (data->refCount < 2 && minLength <= data->allocLength) {
        return m_pchChars;
    }
    const int length = data->dataLength;
    const int capacity = std::max(minLength, length);
    if (capacity == 0) {
        Release();
        return m_pchChars;
    }
    CStringData* const fresh = NewBuffer(capacity);
    CopyUnits(UnitsOf(fresh), m_pchChars, static_cast<std::size_t>(length));
    fresh->dataLength = length;
    ClearBehindText(fresh);
    Adopt(fresh);
    return m_pchChars;
}

unsigned short* CString::GetBufferSetLength(int length) {
    length = std::max(length, 0);
    GetBuffer(length);
    DropHostString(Data());
    SetLength(Data(), length);
    return m_pchChars;
}

void CString::ReleaseBuffer(int length) {
    // A copy like that of CopyBeforeWrite, but cleared behind the text: any length may follow.
    GetBuffer(0);
    CStringData* const data = Data();
    DropHostString(data);
    if (length == -1) {
        const unsigned short* const end = FindUnit(m_pchChars, m_pchChars + data->allocLength, 0);
        length = end == nullptr ? data->allocLength : static_cast<int>(end - m_pchChars);
    }
    SetLength(data, std::clamp(length, 0, data->allocLength));
}

unsigned short* CString::LockSharedBuffer() {
    GetBuffer(0);
    if (m_pchChars != EmptyText()) {
        Data()->refCount = -1;
    }
    return m_pchChars;
}

void CString::FreeExtra() {
    const int length = GetLength();
    if (length == Data()->allocLength) {
        return;
    }
    if (length == 0) {
        Release();
        return;
    }
    CStringData* const data = NewBuffer(length);
    CopyUnits(UnitsOf(data), m_pchChars, static_cast<std::size_t>(length));
    Adopt(data);
}

void CString::Empty() {
    if (GetLength() == 0) {
        return;
    }
    if (Data()->refCount >= 0) {
        Release();
    } else {
        AssignCopy(0, &afxChNil);
    }
}

// ---- Primitives ---------------------------------------------------------------------------------

void CString::Adopt(CStringData* data) noexcept {
    Release();
    m_pchChars = UnitsOf(data);
}

void CString::AllocBuffer(int length) {
    if (length <= 0) {
        m_pchChars = EmptyText();
        return;
    }
    CStringData* const data = NewBuffer(length);
    std::fill_n(UnitsOf(data), length, static_cast<unsigned short>(0));
    m_pchChars = UnitsOf(data);
}

void CString::CopyBeforeWrite() {
    if (Data()->refCount > 1) {
        const int length = GetLength();
        if (length == 0) {
            Release();
        } else {
            CStringData* const data = NewBuffer(length);
            CopyUnits(UnitsOf(data), m_pchChars, static_cast<std::size_t>(length));
            Adopt(data);
        }
    }
    DropHostString(Data());
}

void CString::AllocBeforeWrite(int length) {
    if (Data()->refCount < 2 && length <= Data()->allocLength) {
        DropHostString(Data());
        return;
    }
    CString fresh;
    fresh.AllocBuffer(length);
    Release();
    swap(*this, fresh);
}

void CString::AllocCopy(CString& dest, int copyLen, int copyIndex, int extraLen) const {
    const int copied = std::max(copyLen, 0);
    const int length = AddLengths(copied, std::max(extraLen, 0));
    const int first = std::clamp(copyIndex, 0, GetLength());
    const int present = std::min(copied, GetLength() - first);
    if (length == 0) {
        dest.m_pchChars = EmptyText();
        return;
    }
    CStringData* const data = NewBuffer(length);
    CopyUnits(UnitsOf(data), m_pchChars + first, static_cast<std::size_t>(present));
    std::fill(UnitsOf(data) + present, UnitsOf(data) + length, static_cast<unsigned short>(0));
    dest.m_pchChars = UnitsOf(data);
}

void CString::AssignCopy(int length, Lum::UnitPointer units) {
    const int count = units == nullptr ? 0 : std::max(length, 0);
    CStringData* const data = Data();
    if (data->refCount < 2 && count <= data->allocLength) {
        DropHostString(data);
        MoveUnits(m_pchChars, units, static_cast<std::size_t>(count));
        SetLength(data, count);
    } else if (count == 0) {
        Release();
    } else {
        CStringData* const fresh = NewBuffer(count);
        CopyUnits(UnitsOf(fresh), units, static_cast<std::size_t>(count));
        Adopt(fresh);
    }
}

void CString::ConcatCopy(int length1, Lum::UnitPointer units1, int length2, Lum::UnitPointer units2) {
    const int count1 = units1 == nullptr ? 0 : std::max(length1, 0);
    const int count2 = units2 == nullptr ? 0 : std::max(length2, 0);
    const int length = AddLengths(count1, count2);
    if (length == 0) {
        return;
    }
    CStringData* const data = NewBuffer(length);
    CopyUnits(UnitsOf(data), units1, static_cast<std::size_t>(count1));
    CopyUnits(UnitsOf(data) + count1, units2, static_cast<std::size_t>(count2));
    m_pchChars = UnitsOf(data);
}

void CString::ConcatInPlace(int length, Lum::UnitPointer units) {
    if (length <= 0 || units == nullptr) {
        return;
    }
    CStringData* const data = Data();
    const auto count = static_cast<std::size_t>(length);
    const int before = data->dataLength;
    const int total = AddLengths(before, length);
    if (data->refCount < 2 && total <= data->allocLength) {
        DropHostString(data);
        MoveUnits(m_pchChars + before, units, count);
        SetLength(data, total);
        return;
    }
    CStringData* const fresh = NewBuffer(total);
    CopyUnits(UnitsOf(fresh), m_pchChars, static_cast<std::size_t>(before));
    CopyUnits(UnitsOf(fresh) + before, units, count);
    Adopt(fresh);
}

CString& CString::operator+=(const unsigned short* text) {
    ConcatInPlace(LengthOf(text), text);
    return *this;
}

// ---- The family's free names --------------------------------------------------------------------

const CString& AfxGetEmptyString() noexcept {
    // A string is its one pointer, so that the pointer can be looked at as a string.
    return reinterpret_cast<const CString&>(_afxPchNil);
}

bool AfxIsValidString(const unsigned short* text, int /*length*/) noexcept { return text != nullptr; }
