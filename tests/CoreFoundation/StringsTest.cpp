#include "Platform/CoreFoundation/CFString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "Platform/CoreFoundation/CFArray.h"
#include "Platform/TextEncoding/EncodingNames.h"

namespace {

struct Release {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};
using OwnedString = std::unique_ptr<const __CFString, Release>;
using Units = std::vector<UniChar>;

OwnedString Make(const Units& units) {
    return OwnedString(
        CFStringCreateWithCharacters(kCFAllocatorDefault, units.data(), static_cast<CFIndex>(units.size())));
}
OwnedString Make(const std::string& bytes, CFStringEncoding encoding = kCFStringEncodingUTF8) {
    return OwnedString(CFStringCreateWithCString(kCFAllocatorDefault, bytes.c_str(), encoding));
}
Units UnitsOf(const OwnedString& string) {
    Units units(static_cast<std::size_t>(CFStringGetLength(string.get())));
    CFStringGetCharacters(string.get(), CFRangeMake(0, CFStringGetLength(string.get())), units.data());
    return units;
}

TEST(CoreFoundationStrings, KeepAnyUnitsAndCutRanges) {
    const Units units{'a', 0, 0xD800, 0xFFFF};
    const OwnedString string = Make(units);
    EXPECT_EQ(UnitsOf(string), units);
    EXPECT_EQ(CFGetTypeID(string.get()), CFStringGetTypeID());
    struct Row {
        CFRange range;
        Units units;
    };
    constexpr CFIndex kMost = std::numeric_limits<CFIndex>::max();
    for (const Row& row : std::vector<Row>{{{1, 2}, {0, 0xD800}},
                                           {{3, kMost}, {0xFFFF}},
                                           {{-1, 1}, {'a'}},
                                           {{kMost, kMost}, {}},
                                           {{4, 1}, {}},
                                           {{0, -1}, {}}}) {
        const OwnedString part(CFStringCreateWithSubstring(kCFAllocatorDefault, string.get(), row.range));
        EXPECT_EQ(UnitsOf(part), row.units) << row.range.location << ' ' << row.range.length;
    }
    EXPECT_EQ(CFStringCreateWithCharacters(kCFAllocatorDefault, nullptr, 1), nullptr);
    EXPECT_EQ(CFStringCreateWithCharacters(kCFAllocatorDefault, units.data(), -1), nullptr);
    EXPECT_EQ(CFStringGetLength(OwnedString(CFStringCreateWithCharacters(kCFAllocatorDefault, nullptr, 0)).get()), 0);
}

TEST(CoreFoundationStrings, MayBorrowUnitsButNoBytes) {
    Units units{'a', 'b'};
    const OwnedString borrowing(
        CFStringCreateWithCharactersNoCopy(kCFAllocatorDefault, units.data(), 2, kCFAllocatorNull));
    std::string bytes = "ab";
    const OwnedString copying(
        CFStringCreateWithCStringNoCopy(kCFAllocatorDefault, bytes.c_str(), kCFStringEncodingUTF8, kCFAllocatorNull));
    units[0] = 'x';
    bytes[0] = 'x';
    EXPECT_EQ(UnitsOf(borrowing), units);
    EXPECT_EQ(UnitsOf(copying), (Units{'a', 'b'}));
    EXPECT_EQ(CFStringCreateWithCharactersNoCopy(kCFAllocatorDefault, units.data(), 2, kCFAllocatorDefault), nullptr);
}

TEST(CoreFoundationStrings, WriteNothingPastABufferAndAllOrNothing) {
    const std::string text = "a\xC3\xA9\xF0\x9F\x98\x80";
    const auto size = static_cast<CFIndex>(text.size());
    const OwnedString string = Make(text);
    for (CFIndex room = -1; room <= size + 1; ++room) {
        const bool fits = room > size;
        std::vector<char> buffer(static_cast<std::size_t>(std::max<CFIndex>(room, 0)), 'x');
        EXPECT_EQ(CFStringGetCString(string.get(), buffer.data(), room, kCFStringEncodingUTF8), fits);
        std::vector<unsigned char> pascal(buffer.size(), 'x');
        EXPECT_EQ(CFStringGetPascalString(string.get(), pascal.data(), room, kCFStringEncodingUTF8), fits);
        if (room > 0) {
            EXPECT_EQ(std::string(buffer.data()), fits ? text : "");
            EXPECT_EQ(std::string(pascal.begin() + 1, pascal.begin() + 1 + pascal[0]), fits ? text : "");
        }
    }
    for (const std::size_t length : {0U, 255U, 256U}) {
        std::array<unsigned char, 300> pascal{};
        const OwnedString ascii = Make(std::string(length, 'y'));
        EXPECT_EQ(CFStringGetPascalString(ascii.get(), pascal.data(), 300, kCFStringEncodingASCII), length < 256);
        EXPECT_EQ(pascal[0], length % 256);
        const OwnedString back(
            CFStringCreateWithPascalString(kCFAllocatorDefault, pascal.data(), kCFStringEncodingASCII));
        EXPECT_EQ(CFStringGetLength(back.get()), static_cast<CFIndex>(length % 256));
    }
}

TEST(CoreFoundationStrings, AreCountedByAllThreadsTogether) {
    OwnedString string = Make("shared");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20'000; ++round) {
                CFRelease(CFRetain(string.get()));
            }
            CFRetain(string.get());
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    // A count that lost one would free the string too early, or never.
    for (int i = 0; i < 4; ++i) {
        CFRelease(string.get());
    }
    EXPECT_EQ(CFStringGetLength(string.get()), 6);
}

TEST(CoreFoundationStrings, TakeBytesOnlyWhereAllAreValid) {
    struct Row {
        CFStringEncoding encoding;
        const char* bytes;
        Units units;  // none where they are not valid
    };
    for (const Row& row : std::vector<Row>{{kCFStringEncodingASCII, "a", {'a'}},
                                           {kCFStringEncodingASCII, "a\x80", {}},
                                           {kCFStringEncodingISOLatin1, "\x80\xFF", {0x80, 0xFF}},
                                           {kCFStringEncodingUTF8, "\xC3\xA9\xE2\x82\xAC", {0xE9, 0x20AC}},
                                           {kCFStringEncodingUTF8, "\xF0\x9F\x98\x80", {0xD83D, 0xDE00}},
                                           {kCFStringEncodingUTF8, "a\xE2\x82", {}},
                                           {kCFStringEncodingUTF8, "\xC0\x80", {}},
                                           {kCFStringEncodingUTF8, "\xED\xA0\x80", {}},
                                           {kCFStringEncodingUTF8, "\xF4\x90\x80\x80", {}},
                                           {kCFStringEncodingUTF16, "abc", {}},
                                           {0xFFFF, "a", {}}}) {
        const OwnedString string = Make(row.bytes, row.encoding);
        ASSERT_EQ(string != nullptr, !row.units.empty()) << row.bytes;
        if (string) {
            EXPECT_EQ(UnitsOf(string), row.units) << row.bytes;
        }
    }
}

TEST(CoreFoundationStrings, ComeBackFromEveryEncodingWithinItsMaximumSize) {
    const std::vector<Units> characters{{'a'}, {'~'}, {0xE9}, {0x42F}, {0x5D0}, {0x3042}, {0x4E00}, {0xAC00}, {0xFFFD}};
    const std::vector<Units> pairs{{0xD83D, 0xDE00}, {0xD840, 0xDC00}};
    std::mt19937 random(5);
    int said = 0;
    for (const TextConversion::EncodingRow& row : TextConversion::EncodingRows()) {
        for (int i = 0; i < 100; ++i) {
            // Two characters by turns: the most shifts that there can be.
            Units units;
            const std::array chosen{characters[random() % characters.size()],
                                    random() % 8 == 0 ? pairs[random() % 2] : characters[random() % 2]};
            for (std::size_t length = random() % 12; length > 0; --length) {
                units.insert(units.end(), chosen[length % 2].begin(), chosen[length % 2].end());
            }
            std::array<unsigned char, 256> pascal{};
            const auto length = static_cast<CFIndex>(units.size());
            if (CFStringGetPascalString(Make(units).get(), pascal.data(), 256, row.encoding) != 0) {
                ++said;
                EXPECT_LE(pascal[0], CFStringGetMaximumSizeForEncoding(length, row.encoding)) << row.names;
                const OwnedString back(
                    CFStringCreateWithPascalString(kCFAllocatorDefault, pascal.data(), row.encoding));
                ASSERT_TRUE(back) << row.names;
                EXPECT_EQ(UnitsOf(back), units) << row.names;
            }
        }
        constexpr CFIndex kMost = std::numeric_limits<CFIndex>::max();
        const CFIndex size = CFStringGetMaximumSizeForEncoding(kMost, row.encoding);
        EXPECT_TRUE(size == -1 || size == kMost) << row.names;
    }
    EXPECT_GT(said, 2000);
}

TEST(CoreFoundationStrings, ReadTheNumberTheyBeginWith) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::string zeros(400, '0');
    struct Row {
        std::string text;
        std::int32_t integer;
        double real;
    };
    for (const Row& row : std::vector<Row>{{"", 0, 0},
                                           {" \t\n\v\f\r-12x", -12, -12},
                                           {"+7.5e1 ", 7, 75},
                                           {".5", 0, 0.5},
                                           {"5.", 5, 5},
                                           {"1e", 1, 1},
                                           {"1e+", 1, 1},
                                           {"1,5", 1, 1},
                                           {"- 1", 0, 0},
                                           {"--1", 0, 0},
                                           {"+-1", 0, 0},
                                           {"0x10", 0, 0},
                                           {"inf", 0, 0},
                                           {"-nan", 0, 0},
                                           {"\xC2\xA0"
                                            "1",
                                            0, 0},
                                           {"2147483647", 2147483647, 2147483647.0},
                                           {"2147483648", 2147483647, 2147483648.0},
                                           {"-2147483649", -2147483647 - 1, -2147483649.0},
                                           {"-99999999999999999999", -2147483647 - 1, -1e20},
                                           {"1e999", 1, kInfinity},
                                           {"-1e99999999999999999999", -1, -kInfinity},
                                           {"1e-999", 1, 0},
                                           {"1e-99999999999999999999.5", 1, 0},
                                           {"0." + zeros + "1", 0, 0},
                                           {"1" + zeros, 2147483647, kInfinity},
                                           {"1" + zeros + "e-400", 2147483647, 1},
                                           {"1" + zeros + ".5.e-999", 2147483647, kInfinity}}) {
        const OwnedString string = Make(row.text);
        EXPECT_EQ(CFStringGetIntValue(string.get()), row.integer) << row.text;
        EXPECT_EQ(CFStringGetDoubleValue(string.get()), row.real) << row.text;
    }
}

TEST(CoreFoundationArrays, HoldAReferenceToWhatTheyHold) {
    const CFMutableArrayRef array = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
    const CFMutableArrayRef bare = CFArrayCreateMutable(kCFAllocatorDefault, 5, nullptr);
    OwnedString string = Make("text");
    const CFStringRef first = string.get();
    CFArrayAppendValue(array, first);
    CFArrayAppendValue(bare, first);
    string.reset();
    EXPECT_EQ(CFStringGetLength(static_cast<CFStringRef>(CFArrayGetValueAtIndex(array, 0))), 4);
    EXPECT_EQ(CFArrayGetValueAtIndex(bare, 0), first);
    EXPECT_EQ(CFArrayGetCount(array), 1);
    EXPECT_EQ(CFArrayGetValueAtIndex(array, 1), nullptr);
    EXPECT_EQ(CFArrayGetValueAtIndex(array, -1), nullptr);
    EXPECT_EQ(CFArrayGetCount(nullptr), 0);
    CFRelease(bare);
    CFRelease(array);
}

}  // namespace
