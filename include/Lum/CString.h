// CString: a string of 16-bit code units whose copies share one buffer until one of them writes.
//
// A CString is one pointer, to units that end with a 0 behind the text; zeros inside are text like any
// other. In front of the units lies a CStringData with the count of sharers. Copying shares and costs
// an addition. The first write through any holder gives that holder a buffer of its own. Buffers have a
// capacity of 64, 128, 256 or 512 units, or above that exactly the length; appending does not double, so
// grow long texts with GetBuffer or in a std::u16string.
//
// Compatibility: the count goes up when a string is released too, and a buffer returns to its pool only if
// it is locked (LockBuffer) when its holder is destroyed; every other buffer is kept for the life of the
// process. Applications rely on it: a pointer from GetAsUniCharStr to an unlocked buffer never dangles. A
// buffer that was once shared counts as shared for ever. Where many strings are made and destroyed, lock each
// one last.
//
// Indices, lengths and results are in code units, int. An operation that takes units takes
// `const unsigned short*` and `const char16_t*`; the text it points to ends with a 0 unit, may lie
// inside the string itself, and null counts as empty. One that takes a unit takes any integer or
// character. A value outside of the text is clamped or ignored as each operation says; nothing reads
// or writes outside of the buffer. Case and white space follow ASCII, whatever the locale.
//
// Threads: neither strings nor the pools that all of them share are synchronised, so that all strings of a
// process belong to one thread at a time. Static initialisers of an application may use all of it.
//
// Failure: only std::bad_alloc is thrown, for a length that an int cannot hold as well; the string is
// then as it was.
#pragma once

#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <limits>
#include <string>
#include <string_view>

#include <Lum/Export.h>
#include <Lum/FixedAlloc.h>
#include <Lum/HostStrings.h>
#include <Lum/RuntimeNames.h>
#include <Lum/StringResources.h>
#include <Lum/Units.h>

/// What lies in front of a buffer's units. For reading; see CString.
struct CStringData {
    CFStringRef cachedCFString;  ///< The text as the host's string, made when asked for; owned.
    std::int32_t refCount;       ///< 1 when new, and more; -1 if locked or the empty buffer's. It stays at its maximum.
    std::int32_t dataLength;     ///< Units of text, without the 0 behind it.
    std::int32_t allocLength;    ///< The capacity in units, without the 0 behind them.
};
static_assert(sizeof(CStringData) == (sizeof(void*) == 4 ? 16 : 24));

/// The shared empty buffer's layout.
struct CStringEmptyBuffer {
    CStringData header;         ///< The head, with the length 0.
    unsigned short terminator;  ///< The 0 that is the text.
};

// The one buffer of all empty strings, never counted nor freed, and two pointers into it.
/// The empty buffer itself.
extern LUM_API CStringEmptyBuffer _afxInitData;  // NOLINT: reserved, but this family's own name
/// Its head.
extern LUM_API CStringData* const _afxDataNil;  // NOLINT
/// Its units.
extern LUM_API unsigned short* const _afxPchNil;  // NOLINT
extern LUM_API const unsigned short afxChNil;     ///< A 0 unit: the empty text.

/// See the head of this file.
class LUM_API CString {
public:
    using value_type = unsigned short;             ///< A code unit.
    using const_iterator = const unsigned short*;  ///< Runs over the units; valid as long as the pointer that it is.
    using iterator = const_iterator;               ///< The same: units are written by SetAt and GetBuffer.

    // ---- Construction and assignment ------------------------------------------------------------

    /// The empty string; allocates nothing.
    CString() noexcept : m_pchChars(EmptyText()) {}
    CString(std::nullptr_t) noexcept : CString() {}
    /// Shares the buffer of `other`; copies the text if that is locked.
    CString(const CString& other) : m_pchChars(other.m_pchChars) {
        if (other.Data()->refCount < 0) {
            m_pchChars = EmptyText();
            AssignShared(other);
        } else {
            CountUp(Data());
        }
    }
    /// A copy of a 0-terminated text. A value below 0x10000 is no pointer but the number of a string
    /// resource, which is loaded as LoadString does.
    CString(const unsigned short* text);
    CString(const char16_t* text) : CString(Lum::AsUnits(text)) {}
    /// A copy of `length` units, zeros included; a negative length counts as 0, null as zeros.
    CString(const unsigned short* units, int length);
    CString(const char16_t* units, int length) : CString(Lum::AsUnits(units), length) {}
    explicit CString(std::u16string_view text);
    /// `repeat` times the unit; the empty string if that is not positive.
    template <std::integral Unit>
    CString(Unit unit, int repeat) : m_pchChars(EmptyText()) {
        Fill(Lum::AsUnit(unit), repeat);
    }
    /// From a NUL-terminated text in the application's encoding; null is empty, and a value below
    /// 0x10000 the number of a string resource. If the bytes are not valid in the encoding, the
    /// string is as many 0 units as there are bytes.
    CString(const char* text);
    /// The same: all of `text` up to its NUL, however small `length` is. If `text` is null or not valid,
    /// the string is `length` 0 units. Empty if `length` is 0 or less.
    CString(const char* text, int length);
    /// Releases the buffer; see the head of this file.
    ~CString() {
        if (m_pchChars != EmptyText()) {
            CountRelease(Data());
        }
    }

    /// Shares the buffer of `other`; copies the text if either is locked or `other` has the empty buffer.
    CString& operator=(const CString& other);
    /// Copies a 0-terminated text; null empties. No value is taken for a resource's number here.
    CString& operator=(const unsigned short* text);
    CString& operator=(const char16_t* text) { return *this = Lum::AsUnits(text); }
    CString& operator=(std::u16string_view text) {
        AssignCopy(LengthOf(text), text.data());
        return *this;
    }
    CString& operator=(std::nullptr_t) { return *this = static_cast<const unsigned short*>(nullptr); }
    /// Becomes the one unit.
    template <std::integral Unit>
    CString& operator=(Unit unit) {
        const unsigned short text = Lum::AsUnit(unit);
        AssignCopy(1, &text);
        return *this;
    }
    /// From the application's encoding; null empties, and bytes not valid in it change nothing.
    CString& operator=(const char* text);

    /// Exchanges the buffers, without counting.
    friend void swap(CString& a, CString& b) noexcept {
        unsigned short* const chars = a.m_pchChars;
        a.m_pchChars = b.m_pchChars;
        b.m_pchChars = chars;
    }

    // ---- The text -------------------------------------------------------------------------------

    /// The length in units, without the 0 behind the text.
    [[nodiscard]] int GetLength() const noexcept { return Data()->dataLength; }
    /// Whether the length is 0.
    [[nodiscard]] bool IsEmpty() const noexcept { return GetLength() == 0; }
    /// The unit at `index`; 0 at the length and outside of the text.
    [[nodiscard]] unsigned short GetAt(int index) const noexcept { return (*this)[index]; }
    /// The same for every integer type.
    template <std::integral Index>
    [[nodiscard]] unsigned short operator[](Index index) const noexcept {
        const auto place = static_cast<long long>(index);
        return place < 0 || place > GetLength() ? static_cast<unsigned short>(0) : m_pchChars[place];
    }
    /// The units, with a 0 behind them; see the head of this file for how long they stay.
    [[nodiscard]] const unsigned short* GetAsUniCharStr() const noexcept { return m_pchChars; }
    /// As GetAsUniCharStr.
    operator const unsigned short*() const noexcept { return m_pchChars; }
    /// A view of the text, zeros in it included; good as long as the pointer from GetAsUniCharStr.
    operator std::u16string_view() const noexcept {
        return {Lum::AsChar16(static_cast<const unsigned short*>(m_pchChars)), static_cast<std::size_t>(GetLength())};
    }
    /// The first unit.
    [[nodiscard]] const_iterator begin() const noexcept { return m_pchChars; }
    /// Behind the last unit, where the 0 is.
    [[nodiscard]] const_iterator end() const noexcept { return m_pchChars + GetLength(); }

    // ---- Comparison -----------------------------------------------------------------------------
    // By the values of the units, then by length. A null pointer is an empty text.

    /// -1, 0 or 1.
    [[nodiscard]] int Compare(const CString& other) const noexcept;
    [[nodiscard]] int Compare(const unsigned short* text) const;
    [[nodiscard]] int Compare(const char16_t* text) const { return Compare(Lum::AsUnits(text)); }
    /// The same with A to Z as a to z.
    [[nodiscard]] int CompareNoCase(Lum::UnitPointer text) const;

    /// Whether both have the same units.
    friend bool operator==(const CString& a, const CString& b) noexcept {
        return a.m_pchChars == b.m_pchChars || a.Equals(b.m_pchChars, b.GetLength());
    }
    friend bool operator==(const CString& a, const unsigned short* b) { return a.Compare(b) == 0; }
    friend bool operator==(const CString& a, const char16_t* b) { return a.Compare(b) == 0; }
    friend bool operator==(const CString& a, std::nullptr_t) noexcept { return a.IsEmpty(); }
    friend bool operator==(const CString& a, std::u16string_view b) noexcept { return std::u16string_view(a) == b; }
    /// As Compare.
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept { return a.Compare(b) <=> 0; }
    friend std::strong_ordering operator<=>(const CString& a, const unsigned short* b) { return a.Compare(b) <=> 0; }
    friend std::strong_ordering operator<=>(const CString& a, const char16_t* b) { return a.Compare(b) <=> 0; }
    friend std::strong_ordering operator<=>(const CString& a, std::u16string_view b) noexcept {
        return std::u16string_view(a).compare(b) <=> 0;
    }

    // The generic comparisons of the standard library would compare pointers if these had no names.
    /// As Compare, each of the four.
    friend bool operator<(const CString& a, const CString& b) noexcept { return a.Compare(b) < 0; }
    /// As Compare.
    friend bool operator>(const CString& a, const CString& b) noexcept { return a.Compare(b) > 0; }
    /// As Compare.
    friend bool operator<=(const CString& a, const CString& b) noexcept { return a.Compare(b) <= 0; }
    /// As Compare.
    friend bool operator>=(const CString& a, const CString& b) noexcept { return a.Compare(b) >= 0; }

    // ---- Searching ------------------------------------------------------------------------------
    // The index of what is found, or -1.

    /// The first `unit` at or behind `start`; the 0 behind the text is found too. -1 if `start` is not
    /// below the length, so always for an empty string. A negative start counts as 0.
    template <std::integral Unit>
    [[nodiscard]] int Find(Unit unit, int start = 0) const noexcept {
        return FindFirst(Lum::AsUnit(unit), start);
    }
    /// The first occurrence of a text at or behind `start`; an empty one is found at `start` unless that
    /// is above the length. Linear in both lengths.
    [[nodiscard]] int Find(Lum::UnitPointer text, int start = 0) const;
    /// The last `unit`; the length for 0.
    template <std::integral Unit>
    [[nodiscard]] int ReverseFind(Unit unit) const noexcept {
        return FindLast(Lum::AsUnit(unit));
    }
    /// The first unit that is in `set`. Ends at a 0 unit in the text.
    [[nodiscard]] int FindOneOf(Lum::UnitPointer set) const;

    // ---- Parts of the text ----------------------------------------------------------------------
    // New strings. What is the whole text shares the buffer.

    /// The first `count` units, clamped to the text.
    [[nodiscard]] CString Left(int count) const;
    /// The last `count` units, clamped to the text.
    [[nodiscard]] CString Right(int count) const;
    /// `count` units from `first` on; each is raised to 0, then both are cut to the text. Mid(2, 100)
    /// of "abcdef" is "cdef", Mid(10, 2) is empty.
    [[nodiscard]] CString Mid(int first, int count) const;
    /// Mid(first, length - first): the whole text for a negative `first`.
    [[nodiscard]] CString Mid(int first) const;
    /// The longest part at the front of units that are in `set`. Ends at a 0 unit.
    [[nodiscard]] CString SpanIncluding(Lum::UnitPointer set) const;
    /// The longest part at the front of units that are not in `set`. Ends at a 0 unit.
    [[nodiscard]] CString SpanExcluding(Lum::UnitPointer set) const;
    /// The next run of units that are not in `delimiters`, from `position` on, which is then set behind
    /// the delimiter that ends it. Empty, with `position` -1, when none is left. "  a,b" with " ," from
    /// 0 gives "a" (4), "b" (6), "" (-1). A 0 unit ends a token, too. A negative position counts
    /// as 0: stop at -1. Null delimiters give the whole text and leave `position` as it is.
    CString Tokenize(Lum::UnitPointer delimiters, int& position) const;

    // Parts between delimiters, numbered from 0. A delimiter from 0x80 on is taken as a negative number
    // and never found. Delimiter texts match whole, from left to right without overlap; an empty one is
    // never found. GetPart(':', 3) of "a:b:c" is empty.

    /// How many parts there are: one more than delimiters.
    [[nodiscard]] int GetPartCount(char delimiter) const noexcept;
    [[nodiscard]] int GetPartCount(const CString& delimiter) const;
    /// One part; empty if there is none of that number.
    [[nodiscard]] CString GetPart(char delimiter, int index) const;
    [[nodiscard]] CString GetPart(const CString& delimiter, int index) const;
    /// The text behind the last delimiter; the whole text where there is none.
    [[nodiscard]] CString GetLastPart(char delimiter) const;
    [[nodiscard]] CString GetLastPart(const CString& delimiter) const;
    /// The parts from `first` up to and without `last` (-1: to the end), with delimiters between them;
    /// parts that do not exist are empty ones. Of (1, 3) of "a:b:c:d" it is "b:c". If `last`
    /// is below `first`, the result is empty. Compatibility: equal ends give the one part `first`, which
    /// applications ask for so.
    [[nodiscard]] CString GetPartRange(char delimiter, int first, int last) const;
    [[nodiscard]] CString GetPartRange(const CString& delimiter, int first, int last) const;
    /// The text without its first `count` units. Compatibility: not the last `count` units, as the name says.
    [[nodiscard]] CString RightMost(int count) const;

    // ---- Editing --------------------------------------------------------------------------------

    /// Returns to the empty buffer. A locked buffer is kept, with an empty text, and so is any buffer whose
    /// text is empty already.
    void Empty();
    /// Sets the unit at `index`; ignored outside of the text.
    template <std::integral Unit>
    void SetAt(int index, Unit unit) {
        SetUnit(index, Lum::AsUnit(unit));
    }
    /// Removes `count` units from `index` on (a negative index counts as 0), at most to the end. Returns
    /// the length before the call.
    int Delete(int index, int count = 1);
    /// Inserts in front of `index`, clamped to the text, and returns the new length.
    template <std::integral Unit>
    int Insert(int index, Unit unit) {
        const unsigned short text = Lum::AsUnit(unit);
        return InsertUnits(index, &text, 1);
    }
    int Insert(int index, Lum::UnitPointer text);
    /// Replaces every `from` and returns how many there were; 0, without a copy, if both are equal.
    template <std::integral From, std::integral To>
    int Replace(From from, To to) {
        return ReplaceUnit(Lum::AsUnit(from), Lum::AsUnit(to));
    }
    /// Replaces every occurrence of a text, from left to right without overlap, and returns how many
    /// there were: 0 for an empty `from`. The last argument is ignored.
    int Replace(Lum::UnitPointer from, Lum::UnitPointer to, int ignored = 0);
    /// Removes every `unit` and returns how many there were.
    template <std::integral Unit>
    int Remove(Unit unit) {
        return RemoveUnit(Lum::AsUnit(unit));
    }
    /// Reverses the units; a surrogate pair's too.
    void MakeReverse();
    /// Changes the case of ASCII letters. In a double-byte script (IntlInfo) a unit whose low byte is a
    /// lead byte stays, and so does the one behind it.
    void MakeUpper();
    /// To lower case, likewise.
    void MakeLower();

    /// Removes 9 to 13 and 32 at the front.
    void TrimLeft();
    /// Removes 9 to 13, 32 and also the no-break space, 160, at the end.
    void TrimRight();
    /// Both.
    void Trim();
    /// Remove a run of one unit, or of members of `set`, at one end.
    template <std::integral Unit>
    void TrimLeft(Unit unit) {
        const unsigned short set[] = {Lum::AsUnit(unit), 0};
        TrimLeftOf(set, 1);
    }
    template <std::integral Unit>
    void TrimRight(Unit unit) {
        const unsigned short set[] = {Lum::AsUnit(unit), 0};
        TrimRightOf(set, 1);
    }
    void TrimLeft(Lum::UnitPointer set);
    void TrimRight(Lum::UnitPointer set);

    // ---- Joining --------------------------------------------------------------------------------

    /// Appends a text or a unit; null appends nothing.
    CString& operator+=(const CString& text) {
        ConcatInPlace(text.GetLength(), text.m_pchChars);
        return *this;
    }
    CString& operator+=(const unsigned short* text);
    CString& operator+=(const char16_t* text) { return *this += Lum::AsUnits(text); }
    CString& operator+=(std::u16string_view text) {
        ConcatInPlace(LengthOf(text), text.data());
        return *this;
    }
    template <std::integral Unit>
    CString& operator+=(Unit unit) {
        const unsigned short text = Lum::AsUnit(unit);
        ConcatInPlace(1, &text);
        return *this;
    }
    /// A new string of both, with its own buffer.
    friend CString operator+(const CString& a, const CString& b) {
        return {Joined{}, a.m_pchChars, a.GetLength(), b.m_pchChars, b.GetLength()};
    }
    friend CString operator+(const CString& a, const unsigned short* b) {
        return {Joined{}, a.m_pchChars, a.GetLength(), b, LengthOf(b)};
    }
    friend CString operator+(const unsigned short* a, const CString& b) {
        return {Joined{}, a, LengthOf(a), b.m_pchChars, b.GetLength()};
    }
    friend CString operator+(const CString& a, const char16_t* b) { return a + Lum::AsUnits(b); }
    friend CString operator+(const char16_t* a, const CString& b) { return Lum::AsUnits(a) + b; }
    friend CString operator+(const CString& a, std::u16string_view b) {
        return {Joined{}, a.m_pchChars, a.GetLength(), Lum::AsUnits(b.data()), LengthOf(b)};
    }
    friend CString operator+(std::u16string_view a, const CString& b) {
        return {Joined{}, Lum::AsUnits(a.data()), LengthOf(a), b.m_pchChars, b.GetLength()};
    }
    template <std::integral Unit>
    friend CString operator+(const CString& a, Unit b) {
        const unsigned short text = Lum::AsUnit(b);
        return {Joined{}, a.m_pchChars, a.GetLength(), &text, 1};
    }
    template <std::integral Unit>
    friend CString operator+(Unit a, const CString& b) {
        const unsigned short text = Lum::AsUnit(a);
        return {Joined{}, &text, 1, b.m_pchChars, b.GetLength()};
    }

    // ---- Formatting and numbers -----------------------------------------------------------------
    // As the C library's printf formats in the "C" locale, width and precision in units, with
    // positions ("%2$d") too. %s takes a 16-bit text: pass GetAsUniCharStr(), a CString itself cannot go
    // through "...". %S and %hs take a narrow text in the application's encoding, %c a unit, %C and %hc
    // a narrow character. A null text prints "(null)"; %n writes nothing; an unknown conversion prints
    // as it stands. Arguments may be texts of this very string.

    /// s.Format(u"%s: %d", name.GetAsUniCharStr(), 3)
    void Format(const unsigned short* format, ...);
    void Format(const char16_t* format, ...);
    /// With the format that is the string resource `formatId`.
    void Format(unsigned int formatId, ...);
    /// With the arguments as a list, which is used up as by vprintf.
    void FormatV(Lum::UnitPointer format, std::va_list arguments);
    /// A CString among the arguments is refused here, whatever the compiler would make of it.
    template <class Text, class... Arguments>
    requires(std::same_as<Arguments, CString> || ...) void Format(const Text& /*format*/,
                                                                  const Arguments&... /*arguments*/) {
        static_assert(sizeof(Text) == 0, "Format takes a CString as text.GetAsUniCharStr()");
    }
    /// Compatibility: do nothing; applications call them on texts that have to stay as they are.
    void FormatMessage(const unsigned short* format, ...);
    void FormatMessage(const char16_t* format, ...);
    void FormatMessage(unsigned int formatId, ...);
    /// The number that the text begins with behind white space; 0 if there is none. One that an int cannot
    /// hold is the nearest that it can.
    [[nodiscard]] int GetIntValue() const;
    /// The same with a fraction and an exponent, "2.5e3" say.
    [[nodiscard]] double GetDoubleValue() const;

    // ---- UTF-8 ----------------------------------------------------------------------------------
    // Zeros included; a text that is not valid is converted as Lum::Transcoder's asUTF16 and asUTF8 do.

    /// The string of a text in UTF-8.
    [[nodiscard]] static CString FromUTF8(std::string_view utf8);
    /// The text in UTF-8.
    [[nodiscard]] std::string ToUTF8() const;

    // ---- The host's strings and string resources ------------------------------------------------

    /// The text as the host's string, made when first asked for; the caller gives it back with
    /// ReleaseCFStringRef. The encoding is ignored.
    [[nodiscard]] CFStringRef GetCFStringRef(unsigned long encoding) const;
    /// Gives a reference back; null is ignored.
    void ReleaseCFStringRef(CFStringRef string) const;
    /// Takes the text of one of the host's strings, without 0 units at its end; anything else empties.
    /// The encoding is ignored. True.
    bool SetFromCFStringRef(CFStringRef string, unsigned long encoding);

    /// Writes the first 255 units; all behind a 0 unit are 0 then. A 0 follows unless all 255 are used.
    void GetHFSUniStr255(HFSUniStr255* name) const;
    /// Takes all units of the name, 255 at most; all behind a 0 unit are 0 then. Null changes nothing.
    void SetFromHFSUniStr255(const HFSUniStr255* name);
    /// Takes a length byte and that many bytes in the application's encoding. Empties for null and for
    /// bytes that are not valid.
    void FromMac(const unsigned char* pascal);
    /// Writes the same into a buffer of `size` bytes: the first size - 1 units, one less rather than half
    /// a surrogate pair. If their bytes are more than size - 2 or 255, or the encoding cannot express
    /// them, the buffer becomes 0, up to its first 256 bytes. Compatibility: size - 1 bytes would fit, but
    /// applications expect them to be refused.
    /// Null and a size that is not positive change nothing.
    void ToMac(unsigned char* pascal, long size) const;

    // ---- String resources -----------------------------------------------------------------------
    // By number, as <Lum/StringResources.h> says. By type and name, from the newest open resource file
    // (<Lum/Platform.h>), and by handle: `unicode` texts are all the bytes, as units in the host's order;
    // others the bytes up to the first NUL, in the application's encoding. Bytes that are not valid in
    // it load the empty string. Types are four-character codes: 'TEXT' is 0x54455854. Names are Pascal
    // strings in the application's encoding, equal in any case of the ASCII letters. A CString that this
    // encoding cannot say in 254 bytes is refused as a name: the answer is false, and nothing changes.

    /// Loads a string by its number; one that nobody knows loads its own decimal text. False if a table's
    /// string is empty, and if the index leads to an empty entry. Such an entry changes nothing the first
    /// time; while the number's slot is kept, later look-ups load what that first string was then.
    bool LoadString(unsigned int id);
    template <std::integral Id>
    bool LoadString(Id id) {
        return LoadString(static_cast<unsigned int>(id));
    }
    /// Looks numbers up in one more table of the main bundle too, behind those before; ASCII.
    static void AddStringTableForSearch(const char* name);
    /// The names of those tables, or null. To be changed with AddStringTableForSearch.
    static struct __CFArray* m_arrayOfStringTables;  // NOLINT: the services' name

    /// Loads a handle's text, which is empty for what is no handle; false, with nothing changed, for null.
    bool LoadString(char** handle);
    /// The same of a handle with units.
    bool LoadUnicodeString(char** handle);
    /// Loads a resource; false, with nothing changed, if there is none.
    bool LoadString(unsigned long type, const unsigned char* name, bool unicode);
    bool LoadString(unsigned long type, const CString& name, bool unicode);

    /// Writes the text, with no 0 behind it, into a handle, which is resized, or made if `*handle` is null
    /// (give it back with DisposeHandle). Whether there was one.
    bool UnloadUnicodeString(char*** handle) const;
    /// The same up to the first 0 unit in the application's encoding: whole characters of at most twice
    /// as many bytes as units, up to one that the encoding does not have.
    bool UnloadString(char*** handle) const;
    /// Writes into a resource and marks it changed, or adds one with a number of its own. Returns whether
    /// there was one. A file that was opened for reading only, or is full, keeps neither.
    bool UnloadString(unsigned long type, const unsigned char* name, bool unicode) const;
    bool UnloadString(unsigned long type, const CString& name, bool unicode) const;  // NOLINT: not for the answer

    // ---- The buffer -----------------------------------------------------------------------------

    // What is written through a pointer from here stays: the four operations below change no unit of a
    // buffer that they keep but the 0 at a length that they set. All of the capacity may be written, and
    // a 0 behind it. Behind the text, a buffer that GetBuffer makes is 0; one that it keeps holds what the
    // caller or older texts of this process left there, never uninitialised memory.

    /// The units, for writing, at least `minLength` of them and a 0; close with ReleaseBuffer. The
    /// text stays. A buffer that is large enough and not shared is kept: 0 on an empty string gives the
    /// one empty buffer, which is not for writing.
    unsigned short* GetBuffer(int minLength);
    /// GetBuffer, then sets the length, and the 0 there. The caller writes the units that the text did not have.
    unsigned short* GetBufferSetLength(int length);
    /// Sets the length after a write through the buffer: to the first 0 unit in all of the capacity, or
    /// to `length` if that is not -1 (at most the capacity; another negative length counts as 0). If the
    /// string was copied after GetBuffer, it gets a buffer of its own here, and the units written behind the
    /// length before are lost in it: copy the string after ReleaseBuffer.
    void ReleaseBuffer(int length = -1);
    /// Gets a buffer that no copy will share, and which returns to its pool when it is released. The one
    /// empty buffer needs no lock and gets none.
    unsigned short* LockBuffer() {
        if (Data()->refCount < 2) {
            if (m_pchChars != EmptyText()) {
                Data()->refCount = -1;
            }
            return m_pchChars;
        }
        return LockSharedBuffer();
    }
    /// Counts the buffer as unshared, whatever it was before.
    void UnlockBuffer() noexcept {
        if (m_pchChars != EmptyText()) {
            Data()->refCount = 1;
        }
    }
    /// Moves to a new buffer of the least capacity that holds the text, unless the capacity is exactly the
    /// length. Looks at neither the count nor the lock; the new buffer is not locked.
    void FreeExtra();

    // ---- Buffer primitives ----------------------------------------------------------------------
    // What the operations above are made of, for code that manages buffers by itself. Negative lengths
    // count as 0.

    /// Points to a new buffer with a text of `length` 0 units; does not release the old one.
    void AllocBuffer(int length);
    /// Gives a buffer back to its pool or to the heap, whatever its count. The empty one is ignored.
    static void FreeData(CStringData* data) noexcept;
    /// Releases the buffer and points to the empty one.
    void Release() noexcept {
        if (m_pchChars != EmptyText()) {
            CountRelease(Data());
            m_pchChars = EmptyText();
        }
    }
    /// Counts a release of `data`, and frees it if it was locked.
    static void Release(CStringData* data) noexcept {
        if (data != EmptyData()) {
            CountRelease(data);
        }
    }
    /// Gets a buffer of its own, with the text; drops the cached host's string.
    void CopyBeforeWrite();
    /// Gets a buffer of its own with a capacity of `length` units at least; a new one holds that many 0 units.
    void AllocBeforeWrite(int length);
    /// Makes of `dest`, whose buffer is not released, a copy of `copyLen` units from `copyIndex` on and
    /// `extraLen` 0 units; units that this text does not have are 0.
    void AllocCopy(CString& dest, int copyLen, int copyIndex, int extraLen) const;
    /// Becomes a copy of `length` units.
    void AssignCopy(int length, Lum::UnitPointer units);
    /// Becomes two runs of units in a new buffer, the old one not released; unchanged if both are empty.
    void ConcatCopy(int length1, Lum::UnitPointer units1, int length2, Lum::UnitPointer units2);
    /// Appends units: in place if the buffer is large enough and not shared, otherwise in a buffer for exactly
    /// the new length.
    void ConcatInPlace(int length, Lum::UnitPointer units);

private:
    struct Made {};
    struct Joined {};

    /// Takes a buffer that was just made.
    CString(Made /*made*/, CStringData* data) noexcept : m_pchChars(reinterpret_cast<unsigned short*>(data + 1)) {}
    CString(Joined joined, const unsigned short* a, int lengthA, const unsigned short* b, int lengthB);

    static unsigned short* EmptyText() noexcept { return &_afxInitData.terminator; }
    static CStringData* EmptyData() noexcept { return &_afxInitData.header; }
    [[nodiscard]] CStringData* Data() const noexcept { return reinterpret_cast<CStringData*>(m_pchChars) - 1; }
    static void CountUp(CStringData* data) noexcept {
        data->refCount += data->refCount == std::numeric_limits<std::int32_t>::max() ? 0 : 1;
    }
    /// Compatibility: a release counts up as well. Only the release of a locked buffer, at -1, frees it, so that
    /// pointers into other buffers stay valid.
    static void CountRelease(CStringData* data) noexcept {
        CountUp(data);
        if (data->refCount <= 0) {
            FreeData(data);
        }
    }
    /// Units before the 0; 0 for null. Throws std::bad_alloc if no int holds it.
    static int LengthOf(const unsigned short* text);
    static int LengthOf(std::u16string_view text);

    void AssignShared(const CString& other);
    void Begin(const unsigned short* units, int length);
    void Fill(unsigned short unit, int repeat);
    unsigned short* LockSharedBuffer();
    [[nodiscard]] bool Equals(const unsigned short* units, int length) const noexcept;
    [[nodiscard]] int FindFirst(unsigned short unit, int start) const noexcept;
    [[nodiscard]] int FindLast(unsigned short unit) const noexcept;
    int InsertUnits(int index, const unsigned short* units, int length);
    int ReplaceUnit(unsigned short from, unsigned short to);
    int RemoveUnit(unsigned short unit);
    void TrimLeftOf(const unsigned short* set, int size);
    void TrimRightOf(const unsigned short* set, int size);
    void SetUnit(int index, unsigned short unit);
    LUM_HIDDEN void Adopt(CStringData* data) noexcept;
    [[nodiscard]] LUM_HIDDEN CString Piece(std::size_t first, std::size_t count) const;
    LUM_HIDDEN void Cut(std::size_t first, std::size_t count);
    LUM_HIDDEN bool LookUp(unsigned int id);

    unsigned short* m_pchChars;  // Never null; the units, not the header in front of them.
};
static_assert(sizeof(CString) == sizeof(void*));

/// The empty string, which no write has ever touched.
LUM_API const CString& AfxGetEmptyString() noexcept;
/// Whether `text` is not null; the length is ignored.
LUM_API bool AfxIsValidString(const unsigned short* text, int length) noexcept;
inline bool AfxIsValidString(const char16_t* text, int length) noexcept {
    return AfxIsValidString(Lum::AsUnits(text), length);
}

/// Prints as UTF-8; an unpaired surrogate prints as U+FFFD.
LUM_API std::ostream& operator<<(std::ostream& out, const CString& text);
/// What a failed test shows of a string.
LUM_API void PrintTo(const CString& text, std::ostream* out);

/// What the system's script says about bytes. Asked by the host once, and by MakeUpper and MakeLower.
class LUM_API IntlInfo {
public:
    /// Asks the host. Before that the script is a single-byte one.
    static void Initialize();
    /// Whether `byte` is the first of two in the system's script.
    static bool IsLeadByte(unsigned char byte) noexcept { return s_doubleByte && s_leadByteTable[byte] != 0; }

    static long s_systemScript;                 ///< The script's code; 0 is Roman.
    static bool s_doubleByte;                   ///< Whether it is a double-byte script.
    static unsigned char s_leadByteTable[256];  ///< Not 0 for a lead byte.
};

/// @cond
/// Equal strings have equal hashes, which are those of the std::u16string_view.
template <>
struct std::hash<CString> {
    [[nodiscard]] std::size_t operator()(const CString& text) const noexcept {
        return std::hash<std::u16string_view>{}(text);
    }
};
/// @endcond
