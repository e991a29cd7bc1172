// Every index, length and count that an operation takes, at and around the ends of its range, beside what a plain
// string gives.
#include <Lum/CString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include <Lum/Platform.h>
#include <Lum/Transcoder.h>
#include <Lum/URI.h>

namespace {

using U16Text = std::u16string;
constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();

/// Two numbers, and both of them clamped to the text.
struct Numbers {
    int a, b;
    std::size_t from, to;
};

struct LimitRow {
    const char* name;
    int numbers;  ///< How many it takes.
    std::function<U16Text(CString& s, Numbers n)> run;
    std::function<U16Text(U16Text t, Numbers n)> model;
};

U16Text Digits(std::integral auto number) {
    return U16Text(CString::FromUTF8(std::to_string(static_cast<std::ptrdiff_t>(number))));
}

/// The text of a string, whose buffer then goes back.
U16Text Last(CString s) {
    s.LockBuffer();
    return U16Text(s);
}

/// As many units; none for a negative number.
U16Text Filled(int count, char16_t unit) { return U16Text(static_cast<std::size_t>(std::max(count, 0)), unit); }

/// The same in a block of the exact size.
std::vector<unsigned short> Block(int count) {
    return std::vector<unsigned short>(static_cast<std::size_t>(std::max(count, 0)), u'u');
}

/// Runs all rows with pairs of the ends of the types int and short, of each size of a buffer and of the text, and
/// of what is beside them, from `least` to `most`.
void CompareAll(const std::vector<LimitRow>& rows, int most) {
    for (const int length : {0, 1, 63, 65, 600}) {
        std::vector<int> numbers{kLeast, kLeast + 1, kMost - 1, kMost};
        for (const int size : {0, 64, 128, 256, 512, 1 << 15, 1 << 16, length}) {
            numbers.insert(numbers.end(), {size - 1, size, size + 1});
        }
        std::erase_if(numbers, [most](int number) { return number > most; });
        // What takes the memory that it is asked for gets few second numbers.
        const std::vector<int> others = most == kMost ? numbers : std::vector{kLeast, -1, 0, 1, 65, length};
        U16Text t = Filled(length, u'x');
        for (std::size_t i = 0; i < t.size(); i += 7) {
            t[i] = i % 2 == 0 ? u',' : u'b';
        }
        const auto clamped = [length](int n) { return static_cast<std::size_t>(std::clamp(n, 0, length)); };
        for (const LimitRow& row : rows) {
            for (const int a : numbers) {
                for (const int b : row.numbers == 2 ? others : std::vector{0}) {
                    const Numbers n{a, b, clamped(a), clamped(b)};
                    CString s(t);
                    ASSERT_EQ(row.run(s, n), row.model(t, n)) << row.name << ' ' << length << ' ' << a << ' ' << b;
                    s.LockBuffer();
                }
            }
        }
    }
}

U16Text Part(const U16Text& t, int index) {
    std::size_t from = index < 0 ? U16Text::npos : 0;
    for (; index > 0 && from != U16Text::npos; --index) {
        from = t.find(u',', from);
        from += from == U16Text::npos ? 0 : 1;
    }
    return from == U16Text::npos ? U16Text() : t.substr(from, std::min(t.find(u',', from), t.size()) - from);
}

U16Text Token(const U16Text& t, std::size_t from) {
    const std::size_t first = t.find_first_not_of(u',', from), end = std::min(t.find(u',', first), t.size());
    return first == U16Text::npos ? U16Text(u"-1") : t.substr(first, end - first) + Digits(end + 1);
}

/// What ReleaseBuffer makes of a length.
int Released(int size, int length) {
    const int capacity = size > 512 || size == 0 ? size : std::max(64, static_cast<int>(std::bit_ceil(unsigned(size))));
    return length == -1 ? size : std::clamp(length, 0, capacity);
}

U16Text Changed(const CString& s, int size) { return Digits(size) + U16Text(s); }
U16Text Tokenized(const CString& token, const int& position) { return U16Text(token) + Digits(position); }

U16Text WrittenBehind(CString& s, int size) {
    unsigned short* const units = s.GetBuffer(size);
    std::fill_n(units + s.GetLength(), std::max(std::max(size, 0) - s.GetLength(), 0), u'u');
    s.ReleaseBuffer(std::max(size, s.GetLength()));
    return U16Text(s);
}

/// A part of as many units, and as many units more.
U16Text CopiedWithMore(const CString& s, int start, int count) {
    CString copy;
    s.AllocCopy(copy, count, start, count);
    return Last(copy);
}

U16Text PascalLength(const CString& s, int size) {
    std::vector<unsigned char> pascal(Block(size).size(), 9);
    s.ToMac(pascal.data(), size);
    return Digits(pascal.empty() ? -1 : int{pascal[0]});
}

U16Text HostUnits(const CString& s, int size) {
    std::vector<unsigned short> units = Block(std::max(size, 0) + 1);
    const CFStringRef string = s.GetCFStringRef(0);
    CFStringGetLPWSTR(string, units.data(), size, 0);
    s.ReleaseCFStringRef(string);
    return U16Text(Lum::AsChar16(units.data()));
}

U16Text Created(int length) {
    // Only for a negative length, a 0 unit ends the text.
    const std::vector<unsigned short> units = length < 0 ? std::vector<unsigned short>{0} : Block(length);
    const CFStringRef string = CFStringCreateWithLPCWSTR(units.data(), length, 0);
    CString text;
    text.SetFromCFStringRef(string, 0);
    CFRelease(string);
    return Last(std::move(text));
}

/// What is written to a block of `size` bytes, or of as many as any number needs.
U16Text Narrow(const std::function<void(char* to)>& write, int size) {
    std::vector<char> block(static_cast<std::size_t>(std::clamp(size, 0, 24)));
    write(block.data());
    return U16Text(block.begin(), std::find(block.begin(), block.end(), '\0'));
}

U16Text HostBytes(const CString& s, int size) {
    const CFStringRef string = s.GetCFStringRef(0);
    std::vector<char> bytes(Block(size).size());
    CFStringGetLPSTR(string, bytes.data(), size, 0x0600);
    s.ReleaseCFStringRef(string);
    return U16Text(bytes.begin(), std::find(bytes.begin(), bytes.end(), '\0'));
}

U16Text Inflated(int count) {
    std::vector<unsigned short> units = Block(count);
    const std::string bytes(units.size(), 'x');
    inflateAsciiToLPTSTR(bytes.data(), units.data(), count);
    return U16Text(units.begin(), units.end());
}

/// How much a stream writes of an input and into an output of these sizes.
U16Text Streamed(int input, int output) {
    const std::string from(Block(input).size(), 'x');
    std::vector<char> to(Block(output).size());
    const auto result = Lum::StreamConverter("us-ascii", "iso-8859-1").Convert(from, to);
    return result.read == result.written ? Digits(result.written) : u"more is read than is written";
}

U16Text HandleSize(int first, int second) {
    char** const handle = NewHandle(first);
    SetHandleSize(handle, second);
    const long size = GetHandleSize(handle);
    DisposeHandle(handle);
    return Digits(size);
}

#define ROW(name, numbers, given, expected)                                                                   \
    {name, numbers, []([[maybe_unused]] CString& s, [[maybe_unused]] Numbers n) -> U16Text { return given; }, \
     []([[maybe_unused]] U16Text t, [[maybe_unused]] Numbers n) -> U16Text { return expected; }},

const std::vector<LimitRow> kIndices{
#include "tests/cstring/LimitsIndices.h"
};

const std::vector<LimitRow> kLengths{
#include "tests/cstring/LimitsLengths.h"
};

TEST(Limits, IndicesAndCountsAreClamped) { CompareAll(kIndices, kMost); }

// Not above 2^16: what is more takes the memory that it asks for.
TEST(Limits, NegativeLengthsCountAsZero) { CompareAll(kLengths, (1 << 16) + 1); }

/// What is one above the most is refused, with nothing changed.
TEST(Limits, TheLongestTexts) {
    if (std::getenv("LUM_HUGE_TEXTS") == nullptr) {
        GTEST_SKIP() << "takes 10 GB; LUM_HUGE_TEXTS=1 runs it";
    }
    if (sizeof(void*) == 4) {
        EXPECT_THROW(CString('x', kMost), std::bad_alloc);
        EXPECT_THROW(CString(u"abc").GetBuffer(kMost), std::bad_alloc);
        CString s('x', 1 << 28);
        s.LockBuffer();
        EXPECT_THROW((s += s) += s, std::bad_alloc);
        EXPECT_EQ(s.ReverseFind('x'), s.GetLength() - 1);
        return;
    }
    {
        CString s('x', kMost);
        s.LockBuffer();
        EXPECT_THROW(s += 'x', std::bad_alloc);
        EXPECT_THROW(s.Insert(0, s), std::bad_alloc);
        EXPECT_THROW(s.Replace(u"x", u"xx"), std::bad_alloc);
        EXPECT_THROW(s.Format(u"%s%s", s.GetAsUniCharStr(), s.GetAsUniCharStr()), std::bad_alloc);
        EXPECT_EQ(s.GetPartCount('x'), kMost) << "one less than there are";
        EXPECT_EQ(s.Mid(kMost - 1, kMost) + s.Right(1) + s.RightMost(kMost - 1), u"xxx");
        s.SetAt(kMost - 1, 'y');
        int position = kMost - 1;
        EXPECT_EQ(s.Tokenize(u",", position), u"y");
        EXPECT_EQ(position, kMost);
        EXPECT_EQ(s.Find(u"xy"), kMost - 2);
        EXPECT_EQ(s.Find('y'), kMost - 1);
        EXPECT_EQ(s.ToUTF8().size(), static_cast<std::size_t>(kMost));
        EXPECT_EQ(s.Delete(1, kMost), kMost);
        EXPECT_EQ(s, u"x");
    }
    const std::string path(std::size_t{kMost} + 1, 'x');
    EXPECT_THROW(static_cast<void>(CString::FromUTF8(path)), std::bad_alloc);
    Lum::URI uri("http://h/" + path);
    EXPECT_EQ(uri.ToString(false).size(), path.size() + 9);
    EXPECT_EQ(uri.GetFilename(false), path);
    uri.SetQuery(path, true);
    EXPECT_EQ(uri.GetQuery(true), path);
}

}  // namespace
