// The text as parts between delimiters, numbered from 0.
//
// Both kinds of delimiter go through the same steps; they differ in how the next one is found. Parts
// that follow one another are one piece of the text, delimiters between them included, so that a range
// is cut out once however many parts it has.
#include <Lum/CString.h>

#include "Source/Base/UnitSearch.h"
#include "cstring/Buffer.h"

using namespace Lum::Internal;

namespace {

/// One unit. Compatibility: its byte is taken as a signed number, so that one from 0x80 on equals no unit. Applications
/// rely on such texts staying in one piece.
class CharDelimiter {
public:
    explicit CharDelimiter(char delimiter)
        : m_Unit(Lum::AsUnit(delimiter)), m_IsFindable(static_cast<signed char>(delimiter) >= 0) {}

    [[nodiscard]] const unsigned short* FindIn(const unsigned short* first, const unsigned short* last) const noexcept {
        return m_IsFindable ? FindUnit(first, last, m_Unit) : nullptr;
    }
    [[nodiscard]] std::size_t CountIn(const unsigned short* first, const unsigned short* last) const noexcept {
        return m_IsFindable ? CountMatches(first, last, m_Unit) : 0;
    }
    [[nodiscard]] const unsigned short* Units() const noexcept { return &m_Unit; }
    [[nodiscard]] static std::size_t Size() noexcept { return 1; }

private:
    unsigned short m_Unit;
    bool m_IsFindable;
};

/// A text, matched whole; an empty one is found nowhere.
class TextDelimiter {
public:
    explicit TextDelimiter(const CString& delimiter) : m_Delimiter(delimiter) {}

    [[nodiscard]] const unsigned short* FindIn(const unsigned short* first, const unsigned short* last) const noexcept {
        return Size() == 0 ? nullptr : FindUnits(first, last, Units(), Size());
    }
    [[nodiscard]] std::size_t CountIn(const unsigned short* first, const unsigned short* last) const noexcept {
        std::size_t count = 0;
        while ((first = FindIn(first, last)) != nullptr) {
            first += Size();
            ++count;
        }
        return count;
    }
    [[nodiscard]] const unsigned short* Units() const noexcept { return m_Delimiter.GetAsUniCharStr(); }
    [[nodiscard]] std::size_t Size() const noexcept { return static_cast<std::size_t>(m_Delimiter.GetLength()); }

private:
    const CString& m_Delimiter;
};

struct Range {
    std::size_t first;
    std::size_t count;
};

template <class Delimiter>
int PartCount(const CString& text, const Delimiter& delimiter) noexcept {
    // At most as many parts as there are units, and one.
    const std::size_t count = delimiter.CountIn(text.begin(), text.end()) + 1;
    return static_cast<int>(std::min<std::size_t>(count, std::numeric_limits<int>::max()));
}

/// The beginning of the part that follows `index` parts after the one at `begin`; null if the text ends first.
template <class Delimiter>
const unsigned short* SkipParts(const unsigned short* begin, const unsigned short* end, const Delimiter& delimiter,
                                long long index) noexcept {
    for (; index > 0; --index) {
        begin = delimiter.FindIn(begin, end);
        if (begin == nullptr) {
            return nullptr;
        }
        begin += delimiter.Size();
    }
    return begin;
}

/// The `count` parts from the one that begins at `begin`, as a range of `text`; to the end if there are
/// fewer.
template <class Delimiter>
Range RangeOf(const CString& text, const unsigned short* begin, const Delimiter& delimiter, long long count) noexcept {
    const unsigned short* const last = SkipParts(begin, text.end(), delimiter, count - 1);
    const unsigned short* const end = last == nullptr ? nullptr : delimiter.FindIn(last, text.end());
    return {static_cast<std::size_t>(begin - text.begin()),
            static_cast<std::size_t>((end == nullptr ? text.end() : end) - begin)};
}

CString PieceOf(const CString& text, Range range) {
    return text.Mid(static_cast<int>(range.first), static_cast<int>(range.count));
}

template <class Delimiter>
CString Part(const CString& text, const Delimiter& delimiter, int index) {
    const unsigned short* const begin = index < 0 ? nullptr : SkipParts(text.begin(), text.end(), delimiter, index);
    return begin == nullptr ? CString() : PieceOf(text, RangeOf(text, begin, delimiter, 1));
}

template <class Delimiter>
CString LastPart(const CString& text, const Delimiter& delimiter) {
    const unsigned short* begin = text.begin();
    while (const unsigned short* const found = delimiter.FindIn(begin, text.end())) {
        begin = found + delimiter.Size();
    }
    const auto first = static_cast<std::size_t>(begin - text.begin());
    return PieceOf(text, {first, static_cast<std::size_t>(text.GetLength()) - first});
}

/// `before` delimiters, a piece of `text`, and `after` delimiters.
template <class Delimiter>
CString Surrounded(long long before, const CString& text, Range piece, long long after, const Delimiter& delimiter) {
    const auto size = static_cast<long long>(delimiter.Size());
    const long long most = std::numeric_limits<int>::max();
    if (size != 0 && before + after > most / size) {
        throw std::bad_alloc();
    }
    CString result;
    result.AllocBuffer(AddLengths((before + after) * size, static_cast<long long>(piece.count)));
    if (result.IsEmpty()) {
        return result;
    }
    unsigned short* to = result.GetBuffer(0);
    const auto write = [&](long long times) {
        for (; size != 0 && times > 0; --times) {
            CopyUnits(to, delimiter.Units(), delimiter.Size());
            to += size;
        }
    };
    write(before);
    CopyUnits(to, text.begin() + piece.first, piece.count);
    to += piece.count;
    write(after);
    return result;
}

template <class Delimiter>
CString PartRange(const CString& text, const Delimiter& delimiter, int first, int last) {
    if (first == 0 && last == -1) {
        return text;
    }
    const int count = PartCount(text, delimiter);
    if (first == 0 && last == count) {
        return text;
    }
    const int end = last == -1 ? count : last;
    if (end == first) {
        // Compatibility: one part, although the range is empty; applications pass equal ends to get that part.
        return Part(text, delimiter, first);
    }
    if (end < first) {
        return {};
    }
    // Parts of numbers that do not exist are empty, and have their delimiters all the same.
    const long long begin = std::clamp(first, 0, count);
    const long long stop = std::clamp(end, 0, count);
    if (begin >= stop) {
        return Surrounded(static_cast<long long>(end) - first - 1, text, {0, 0}, 0, delimiter);
    }
    const unsigned short* const start = SkipParts(text.begin(), text.end(), delimiter, begin);
    return Surrounded(begin - first, text, RangeOf(text, start, delimiter, stop - begin), end - stop, delimiter);
}

}  // namespace

int CString::GetPartCount(char delimiter) const noexcept { return PartCount(*this, CharDelimiter(delimiter)); }

int CString::GetPartCount(const CString& delimiter) const { return PartCount(*this, TextDelimiter(delimiter)); }

CString CString::GetPart(char delimiter, int index) const { return Part(*this, CharDelimiter(delimiter), index); }

CString CString::GetPart(const CString& delimiter, int index) const {
    return Part(*this, TextDelimiter(delimiter), index);
}

CString CString::GetLastPart(char delimiter) const { return LastPart(*this, CharDelimiter(delimiter)); }

CString CString::GetLastPart(const CString& delimiter) const { return LastPart(*this, TextDelimiter(delimiter)); }

CString CString::GetPartRange(char delimiter, int first, int last) const {
    return PartRange(*this, CharDelimiter(delimiter), first, last);
}

CString CString::GetPartRange(const CString& delimiter, int first, int last) const {
    return PartRange(*this, TextDelimiter(delimiter), first, last);
}

CString CString::RightMost(int count) const {
    // What its name promises it does not do: it drops the first units, and keeps the others.
    const long long kept = static_cast<long long>(GetLength()) - count;
    return Right(static_cast<int>(std::clamp<long long>(kept, 0, GetLength())));
}
