#include "Platform/CoreFoundation/CoreFoundation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "Platform/TextEncoding/Converter.h"
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
OwnedString Make(const std::string& bytes) {
    return OwnedString(CFStringCreateWithCString(kCFAllocatorDefault, bytes.c_str(), kCFStringEncodingUTF8));
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
    constexpr CFIndex kMost = std::numeric_limits<CFIndex>::max();
    const std::pair<CFRange, Units> rows[] = {{{1, 2}, {0, 0xD800}}, {{3, kMost}, {0xFFFF}}, {{-1, 1}, {'a'}},
                                              {{kMost, kMost}, {}},  {{4, 1}, {}},           {{0, -1}, {}}};
    for (const auto& [range, part] : rows) {
        EXPECT_EQ(UnitsOf(OwnedString(CFStringCreateWithSubstring(kCFAllocatorDefault, string.get(), range))), part);
    }
    EXPECT_EQ(CFStringCreateWithCharacters(kCFAllocatorDefault, nullptr, 1), nullptr);
    EXPECT_EQ(CFStringCreateWithCharacters(kCFAllocatorDefault, units.data(), -1), nullptr);
}

TEST(CoreFoundationStrings, MayBorrowUnits) {
    Units units{'a', 'b'};
    const OwnedString borrowing(
        CFStringCreateWithCharactersNoCopy(kCFAllocatorDefault, units.data(), 2, kCFAllocatorNull));
    units[0] = 'x';
    EXPECT_EQ(UnitsOf(borrowing), units);
    EXPECT_EQ(CFStringCreateWithCharactersNoCopy(kCFAllocatorDefault, units.data(), 2, kCFAllocatorDefault), nullptr);
}

TEST(CoreFoundationStrings, AreCountedByAllThreadsTogether) {
    const OwnedString string = Make("shared");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20'000; ++round) {
                CFRelease(CFRetain(string.get()));
            }
        });
    }
    std::for_each(threads.begin(), threads.end(), std::mem_fn(&std::thread::join));
    EXPECT_EQ(CFStringGetLength(string.get()), 6);
}

TEST(CoreFoundationStrings, ComeBackFromEveryEncodingWithinItsMaximumSize) {
    constexpr CFIndex kMost = std::numeric_limits<CFIndex>::max();
    const Units characters{'~', 0xE9, 0x42F, 0x5D0, 0x3042, 0x4E00, 0xAC00, 0xFFFD};
    int converted = 0;
    for (const Lum::Internal::TextConversion::EncodingRow& row : Lum::Internal::TextConversion::EncodingRows()) {
        for (const UniChar character : characters) {
            // Two characters by turns: the most shift sequences that there can be.
            const Units units{character, 'a', character, 'a', character};
            std::array<unsigned char, 256> pascal{};
            if (CFStringGetPascalString(Make(units).get(), pascal.data(), 256, row.encoding) != 0) {
                ++converted;
                EXPECT_LE(pascal[0], CFStringGetMaximumSizeForEncoding(5, row.encoding)) << row.names;
                const OwnedString back(
                    CFStringCreateWithPascalString(kCFAllocatorDefault, pascal.data(), row.encoding));
                EXPECT_TRUE(back && UnitsOf(back) == units) << row.names;
            }
        }
        const CFIndex size = CFStringGetMaximumSizeForEncoding(kMost, row.encoding);
        EXPECT_TRUE(size == -1 || size == kMost) << row.names;
    }
    EXPECT_GT(converted, 200);
}

TEST(CoreFoundationStrings, ReadTheNumberTheyBeginWith) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::string zeros(400, '0');
    const std::tuple<std::string, std::int32_t, double> rows[] = {
        {" \t\n\v\f\r-12x", -12, -12},
        {"+7.5e1 ", 7, 75},
        {"1e+", 1, 1},
        {"- 1", 0, 0},
        {"--1", 0, 0},
        {"0x10", 0, 0},
        {"inf", 0, 0},
        {"\u00A01", 0, 0},
        {"2147483648", 2147483647, 2147483648.0},
        {"-99999999999999999999", -2147483647 - 1, -1e20},
        {"-1e99999999999999999999", -1, -kInfinity},
        {"1e-99999999999999999999.5", 1, 0},
        {"0." + zeros + "1", 0, 0},
        {"1" + zeros + ".5.e-999", 2147483647, kInfinity},
    };
    for (const auto& [text, integer, real] : rows) {
        EXPECT_EQ(CFStringGetIntValue(Make(text).get()), integer) << text;
        EXPECT_EQ(CFStringGetDoubleValue(Make(text).get()), real) << text;
    }
}

TEST(CoreFoundationStrings, AreNotMadeOfWhatCannotBe) {
    std::array<char, 4> buffer{"###"};
    const OwnedString string = Make("a"),
                      lone(CFStringCreateWithCharacters(kCFAllocatorDefault, Units{0xD800}.data(), 1));
    EXPECT_EQ(CFStringGetCString(string.get(), nullptr, 4, 0x0600), 0);
    EXPECT_EQ(CFStringGetCString(string.get(), buffer.data(), 0, 0x0600), 0);
    EXPECT_STREQ(buffer.data(), "###");
    EXPECT_EQ(CFStringGetCString(string.get(), buffer.data(), 4, 0xEEEE), 0);
    EXPECT_STREQ(buffer.data(), "") << "an encoding that there is not";
    EXPECT_EQ(CFStringCreateWithCString(kCFAllocatorDefault, "a", 0xEEEE), nullptr);
    EXPECT_EQ(CFURLCreateWithFileSystemPath(kCFAllocatorDefault, lone.get(), kCFURLPOSIXPathStyle, 0), nullptr);
    const CFURLRef url = CFURLCreateWithFileSystemPath(kCFAllocatorDefault, string.get(), kCFURLPOSIXPathStyle, 0);
    EXPECT_EQ(CFURLCopyFileSystemPath(url, static_cast<CFURLPathStyle>(2)), nullptr);
    CFRelease(url);
    // Neither side is UTF-16.
    EXPECT_FALSE(Lum::Internal::TextConversion::OwnedConverter(0x0A01, 0x0920));
}

TEST(CoreFoundationArrays, HoldAReferenceToWhatTheyHold) {
    const CFMutableArrayRef array = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
    const CFMutableArrayRef bare = CFArrayCreateMutable(kCFAllocatorDefault, 5, nullptr);
    static int released = 0;
    const CFArrayCallBacks counting = {0, nullptr, [](CFAllocatorRef, const void*) { ++released; }};
    const CFMutableArrayRef counted = CFArrayCreateMutable(kCFAllocatorDefault, 0, &counting);
    OwnedString string = Make("text");
    for (const CFMutableArrayRef any : {array, bare, counted}) {
        CFArrayAppendValue(any, string.get());
    }
    EXPECT_EQ(CFArrayGetValueAtIndex(bare, 0), string.get());
    string.reset();
    EXPECT_EQ(CFStringGetLength(static_cast<CFStringRef>(CFArrayGetValueAtIndex(array, 0))), 4);
    EXPECT_EQ(CFArrayGetCount(array), 1);
    EXPECT_EQ(CFArrayGetValueAtIndex(array, 1), nullptr);
    EXPECT_EQ(CFArrayGetValueAtIndex(array, -1), nullptr);
    EXPECT_EQ(CFArrayGetCount(nullptr), 0);
    for (const CFMutableArrayRef any : {array, bare, counted}) {
        CFRelease(any);
    }
    EXPECT_EQ(released, 1);
    CFRelease(CFRetain(nullptr));  // Nothing happens.
}

}  // namespace
