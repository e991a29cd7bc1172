#include <Lum/StringResources.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>

#include "Platform/Resources/Resources.h"
#include "tests/Resources/Files.h"

namespace {

using Files::Code;
using Files::Fork;
using Files::List;
using Files::Number;
using Files::Pascal;
using namespace Lum::Platform;
using namespace std::string_literals;

constexpr std::uint32_t kLatin1 = 0x0201, kShiftJis = 0x0A01;
const CString kBefore = u"before";

class StringResources : public testing::Test {
protected:
    StringResources() {
        SetApplicationTextEncoding(0x08000100);
        SetMainBundle(m_Folder.Path());
        gStrResTableInited = false;
    }
    ~StringResources() override {
        for (const short reference : m_Open) {
            CloseResourceFile(reference);
        }
        if (CString::m_arrayOfStringTables != nullptr) {
            CFRelease(std::exchange(CString::m_arrayOfStringTables, nullptr));
        }
        SetApplicationTextEncoding(0xFFFF);
        SetMainBundle("/nowhere");
        gStrResTableInited = false;
    }
    short Open(const std::vector<Files::Row>& rows, bool writable = false) {
        const auto path = Files::Write(m_Folder / ("file" + std::to_string(m_Open.size())), Fork(rows));
        return m_Open.emplace_back(OpenResourceFile(path, writable));
    }
    Files::Folder m_Folder;
    std::vector<short> m_Open;
};

std::string Index(std::initializer_list<std::pair<int, int>> entries) {
    std::string bytes;
    for (const auto& [number, position] : entries) {
        bytes += Number(static_cast<unsigned>(number), 2) + Number(static_cast<unsigned>(position), 2);
    }
    return bytes;
}

std::string FullList(int first) {
    std::string bytes = Number(500, 2);
    for (int i = 0; i < 500; ++i) {
        bytes += Pascal("entry " + std::to_string(first + i));
    }
    return bytes;
}

TEST_F(StringResources, AreLookedUpInOrder) {
    Files::Write(m_Folder / "Localizable.strings",
                 "5 = \"five\"; 30 = \"not this\"; 31 = \"thirty-one\"; 2500 = \"\"; 7 = \"\";");
    Files::Write(m_Folder / "More.strings", "5 = \"not this\"; 32 = \"more\"; 33 = 33; 2500 = \"more\";");
    Files::Write(m_Folder / "Last.strings", "32 = \"not this\"; 33 = \"last\";");
    CString::AddStringTableForSearch("None");
    CString::AddStringTableForSearch("More");
    CString::AddStringTableForSearch("Last");
    // Not in order; with a number twice as large as a signed one, and one whose entry is empty.
    Open({{"STR#", 200, FullList(0)},
          {"STR#", 201, FullList(500)},
          {"STR#", 202, FullList(1000)},
          {"STR#", 203, List({"", "caf\xC3\xA9", "\xFF"})},
          {"STRm", 0,
           Index({{40000, 1499}, {10, 0}, {11, 499}, {12, 500}, {13, 1500}, {14, 1501}, {15, 1502}, {16, 65535}}) +
               "\1"},
          {"STR ", 10, Pascal("not this")},
          {"STR ", 13, Pascal("nor this")},
          {"STR ", 30, Pascal("thirty")},
          {"STR ", -25536, Pascal("nor this")},
          {"STR ", -1, Pascal("minus one")},
          {"STR ", 34,
           "\x05"
           "cut"},
          {"STR ", 35, ""}});
    const struct {
        unsigned number;
        std::u16string_view text;
        bool isFound;
        const char* why;
    } rows[] = {
        {10, u"entry 0", true, "position 0 is entry 1 of list 200"},
        {11, u"entry 499", true, "the last of list 200"},
        {12, u"entry 500", true, "the first of list 201"},
        {40000, u"entry 1499", true, "the last of list 202; the index comes before single strings"},
        {13, u"before", false, "an empty entry changes nothing and ends the search"},
        {14, u"caf\u00E9", true, "in the application's encoding"},
        {15, u"", true, "bytes that are not valid in it"},
        {16, u"before", false, "a list that is not there"},
        {30, u"thirty", true, "a single string, before the tables"},
        {0xFFFF, u"minus one", true, "numbers of single strings are signed"},
        {0x1FFFF, u"minus one", true, "and have 16 bits"},
        {34, u"cut", true, "a single string that ends too early"},
        {35, u"", true, "a single string of no bytes"},
        {5, u"five", true, "the default table"},
        {31, u"thirty-one", true, "the default table"},
        {32, u"more", true, "the named tables, in order"},
        {33, u"33", true, "an answer that reads like the key is one"},
        {2500, u"", false, "an empty answer is one too"},
        {7, u"", false, "the same outside of the middle range"},
        {999, u"999", true, "nobody knows it"},
        {0, u"0", true, "nobody knows it"},
        {1234567890, u"123456789", true, "nine characters at most"},
        {0xFFFFFFF0, u"-16", true, "signed"},
    };
    for (int round = 0; round < 2; ++round) {  // the second one from the slots, as far as they go
        for (const auto& row : rows) {
            CString text = kBefore;
            EXPECT_EQ(text.LoadString(row.number), row.isFound) << row.number << ": " << row.why;
            EXPECT_EQ(text, row.text) << row.number << ": " << row.why;
        }
    }
    EXPECT_EQ(NumStrRes(), 8);
    EXPECT_EQ(CString(reinterpret_cast<const unsigned short*>(12)), u"entry 500");
    EXPECT_EQ(CString(reinterpret_cast<const char*>(12)), u"entry 500");
}

TEST_F(StringResources, AreKeptInTheirSlots) {
    // Two numbers share a slot where the second one puts the first one out.
    const auto areInOneSlot = [&](unsigned first, unsigned second) {
        gStrResTableInited = false;
        CString text;
        const short old = Open({{"STR ", static_cast<int>(first), Pascal("old")}});
        text.LoadString(first);
        text.LoadString(second);
        CloseResourceFile(old);
        text.LoadString(first);
        return text != u"old";
    };
    EXPECT_TRUE(areInOneSlot(9, 73));
    EXPECT_TRUE(areInOneSlot(10, 11));
    EXPECT_TRUE(areInOneSlot(10, 74));
    EXPECT_TRUE(areInOneSlot(3, 67));
    EXPECT_TRUE(areInOneSlot(0, 5)) << "number 0 is never kept";
    EXPECT_FALSE(areInOneSlot(8, 9));
    EXPECT_FALSE(areInOneSlot(2, 66)) << "66 has slot 3";
    EXPECT_FALSE(areInOneSlot(11, 12));

    // A write to what was loaded does not reach the slot, nor does a locked string.
    gStrResTableInited = false;
    Open({{"STR ", 9, Pascal("nine")}});
    CString text;
    text.LockBuffer();
    ASSERT_TRUE(text.LoadString(9));
    text.SetAt(0, 'x');
    EXPECT_EQ(CString(reinterpret_cast<const unsigned short*>(9)), u"nine");
}

TEST_F(StringResources, TheIndexIsFoundOnceAndOnRequest) {
    CString text;
    text.LoadString(50);
    const short first = Open({{"STRm", 0, Index({{50, 1}, {52, 1}})}, {"STR#", 200, List({"a", "b"})}});
    text.LoadString(52);
    EXPECT_EQ(text, u"52") << "opened after the first look-up";
    EXPECT_EQ(NumStrRes(), 0);
    InitStrResTable();
    EXPECT_EQ(NumStrRes(), 2);
    text.LoadString(50);
    EXPECT_EQ(text, u"50") << "the slot keeps it";
    gStrResTableInited = false;
    text.LoadString(50);
    EXPECT_EQ(text, u"b");

    CloseResourceFile(first);
    EXPECT_EQ(NumStrRes(), 0);
    text.LoadString(52);
    EXPECT_EQ(text, u"52") << "the index went with its file";
    Open({{"STRm", 0, "\x01"}});
    InitStrResTable();
    EXPECT_NE(gStrResTable, nullptr);
    EXPECT_EQ(NumStrRes(), 0);
    text.LoadString(53);
    EXPECT_EQ(text, u"53");
    CheckStrResTableForDups(gStrResTable, 1);
}

TEST_F(StringResources, GoToHandlesAndBack) {
    const struct {
        std::uint32_t encoding;
        CString text;
        std::string bytes, why;
    } rows[] = {
        {kLatin1, u"caf\u00E9", "caf\xE9", "a byte a unit"},
        {kLatin1, u"a\u20ACb", "a", "ends before what the encoding does not have"},
        {kShiftJis, u"\u3042\u3044", "\x82\xA0\x82\xA2", "twice as many bytes as units"},
        {0x08000100, u"\u3042\u3044", "\xE3\x81\x82", "no more than twice, and whole characters"},
        {0x08000100, u"\U0001F600", "\xF0\x9F\x98\x80", "a pair has four"},
        {0x08000100, CString(u"a\0b", 3), "a", "up to the first 0"},
        {0x08000100, u"", "", "empty"},
    };
    for (const auto& row : rows) {
        SetApplicationTextEncoding(row.encoding);
        char** handle = nullptr;
        EXPECT_FALSE(row.text.UnloadString(&handle)) << row.why;
        EXPECT_EQ(std::string(*handle, static_cast<std::size_t>(GetHandleSize(handle))), row.bytes) << row.why;
        EXPECT_TRUE(row.text.UnloadUnicodeString(&handle)) << row.why;
        CString back = kBefore;
        EXPECT_TRUE(back.LoadUnicodeString(handle));
        EXPECT_EQ(back, row.text) << row.why;
        SetHandleSize(handle, GetHandleSize(handle) + 1);
        EXPECT_TRUE(back.LoadUnicodeString(handle));
        EXPECT_EQ(back, row.text) << "a byte left over";
        SetHandleSize(handle, static_cast<long>(row.bytes.size()));
        row.bytes.copy(*handle, row.bytes.size());
        EXPECT_TRUE(back.LoadString(handle)) << "that ends without a NUL";
        EXPECT_EQ(back, row.text.Left(back.GetLength())) << row.why;
        DisposeHandle(handle);
    }
    CString text = kBefore;
    EXPECT_FALSE(text.LoadString(static_cast<char**>(nullptr)));
    EXPECT_FALSE(text.LoadUnicodeString(nullptr));
    EXPECT_EQ(text, kBefore);
    char** handle = NewHandle(3);
    std::memcpy(*handle, "a\0b", 3);
    EXPECT_TRUE(text.LoadString(handle));
    EXPECT_EQ(text, u"a");
    (*handle)[0] = '\xFF';
    EXPECT_TRUE(text.LoadString(handle));
    EXPECT_EQ(text, u"");
    DisposeHandle(handle);
    EXPECT_TRUE(text.LoadString(handle)) << "no longer a handle";
    EXPECT_FALSE(text.UnloadString(nullptr));
}

TEST_F(StringResources, GoToNamedResourcesAndBack) {
    const short reference = Open({{"TEXT", 128, "old", "Name"}, {"utxt", 1, "\x41\0\x42"s, "Wide"}}, true);
    const auto kTextType = Code("TEXT"), kWideType = Code("utxt");
    CString text = kBefore;
    EXPECT_TRUE(text.LoadString(kTextType, u"nAME", false));
    EXPECT_EQ(text, u"old");
    EXPECT_TRUE(text.LoadString(kWideType, reinterpret_cast<const unsigned char*>("\4Wide"), true));
    EXPECT_EQ(text, u"A");
    for (const bool unicode : {false, true}) {
        EXPECT_FALSE(text.LoadString(kTextType, u"none", unicode));
        EXPECT_FALSE(text.LoadString(kTextType, nullptr, unicode));
    }
    EXPECT_EQ(text, u"A");
    EXPECT_TRUE(CString(u"new").UnloadString(kTextType, u"NAME", false));
    EXPECT_FALSE(CString(u"\u00E9").UnloadString(kTextType, u"\u00E9", false));
    EXPECT_FALSE(CString(u"AB").UnloadString(kWideType, reinterpret_cast<const unsigned char*>("\1w"), true));
    ASSERT_TRUE(UpdateResourceFile(reference));
    const std::u16string_view wide = u"AB";
    EXPECT_EQ(Files::Read(m_Folder / "file0"),
              Fork({{"TEXT", 128, "new", "Name"},
                    {"TEXT", 129, "\xC3\xA9", "\xC3\xA9"},
                    {"utxt", 1, "\x41\0\x42"s, "Wide"},
                    {"utxt", 128, std::string(reinterpret_cast<const char*>(wide.data()), 4), "w"}}));
    EXPECT_TRUE(text.LoadString(kTextType, u"\u00E9", false));
    EXPECT_EQ(text, u"\u00E9");
    Open({});
    EXPECT_FALSE(CString(u"x").UnloadString(kTextType, u"x", false)) << "a file for reading only takes nothing";
    EXPECT_FALSE(text.LoadString(kTextType, u"x", false));
    EXPECT_FALSE(text.LoadString(kTextType, u"Name", false)) << "only the newest file is asked";
}

}  // namespace
