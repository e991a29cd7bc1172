#include <Lum/StringResources.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>

#include "Platform/Resources/Resources.h"
#include "tests/Resources/Files.h"

namespace {

using namespace Files;
using namespace Lum::Platform;
using namespace std::string_literals;

constexpr std::uint32_t kLatin1Id = 0x0201, kShiftJis = 0x0A01, kUtf8Id = 0x08000100;
const CString kBefore = u"before";

struct StringResources : testing::Test {
    StringResources() {
        SetApplicationTextEncoding(kUtf8Id);
        SetMainBundle(m_Folder.Path());
        gStrResTableInited = false;
    }
    ~StringResources() override {
        std::for_each(m_Open.begin(), m_Open.end(), CloseResourceFile);
        SetApplicationTextEncoding(0xFFFF);
        SetMainBundle("/nowhere");
    }
    short Open(const std::vector<Row>& rows, bool writable = false) {
        const auto path = Write(m_Folder / ("file" + std::to_string(m_Open.size())), Fork(rows));
        return m_Open.emplace_back(OpenResourceFile(path, writable));
    }
    Folder m_Folder;
    std::vector<short> m_Open;
};

CString Loaded(std::uintptr_t number) { return CString(reinterpret_cast<const unsigned short*>(number)); }

std::string Index(std::initializer_list<std::pair<int, int>> entries) {
    std::string bytes;
    for (const auto& [number, position] : entries) {
        bytes += Number(static_cast<unsigned>(number), 2) + Number(static_cast<unsigned>(position), 2);
    }
    return bytes;
}

Row FullList(int id, int first) {
    std::string bytes = Number(500, 2);
    for (int i = 0; i < 500; ++i) {
        bytes += Pascal("entry " + std::to_string(first + i));
    }
    return {"STR#", id, bytes};
}

TEST_F(StringResources, AreLookedUpInOrder) {
    Write(m_Folder / "Localizable.strings",
          "5 = \"five\"; 30 = \"not this\"; 2500 = \"\"; 7 = \"\"; 4711 = \"%d of %s\";");
    Write(m_Folder / "More.strings", "5 = \"not this\"; 32 = \"more\"; 33 = 33; 2500 = \"more\";");
    Write(m_Folder / "Last.strings", "32 = \"not this\"; 33 = \"last\";");
    for (const char* const name : {"None", "More", "Last"}) {
        CString::AddStringTableForSearch(name);
    }
    // Not in order; with a number twice as large as a signed one, and one whose entry is empty.
    Open({FullList(200, 0),
          FullList(201, 500),
          FullList(202, 1000),
          {"STR#", 203, List({"", "caf\xC3\xA9", "\xFF"})},
          {"STR#", 204, "\x03\xE8\x01z"},
          {"STRm", 0,
           Index({{40000, 1499}, {10, 0}, {12, 500}, {13, 1500}, {14, 1501}, {15, 1502}, {16, 65535}, {17, 2400}}) +
               "\1"},
          {"STR ", 10, Pascal("not this")},
          {"STR ", 13, Pascal("nor this")},
          {"STR ", 30, Pascal("thirty")},
          {"STR ", -25536, Pascal("nor this")},
          {"STR ", -1, Pascal("minus one")},
          {"STR ", 34, "\x05ut"},
          {"STR ", 35, ""}});
    const std::tuple<unsigned, std::u16string_view, bool, const char*> rows[] = {
        {10, u"entry 0", true, "position 0 is entry 1 of list 200"},
        {12, u"entry 500", true, "the first of list 201"},
        {40000, u"entry 1499", true, "the last of list 202; the index comes before single strings"},
        {13, u"before", false, "an empty entry changes nothing and ends the search"},
        {14, u"caf\u00E9", true, "in the application's encoding"},
        {15, u"", true, "bytes that are not valid in it"},
        {16, u"before", false, "a list that is not there"},
        {17, u"before", false, "a list that counts more strings than it has"},
        {30, u"thirty", true, "a single string, before the tables"},
        {0xFFFF, u"minus one", true, "numbers of single strings are signed"},
        {0x1FFFF, u"minus one", true, "and have 16 bits"},
        {34, u"ut", true, "a single string that ends too early"},
        {35, u"", true, "a single string of no bytes"},
        {5, u"five", true, "the default table"},
        {32, u"more", true, "the named tables, in order"},
        {33, u"33", true, "an answer that equals the key counts"},
        {2500, u"", false, "an empty answer counts too"},
        {7, u"", false, "the same outside of the middle range"},
        {0, u"0", true, "in no source: the number itself"},
        {1234567890, u"123456789", true, "nine characters at most"},
        {0xFFFFFFF0, u"-16", true, "signed"},
    };
    for (int round = 0; round < 2; ++round) {  // the second one from the slots, as far as they go
        for (const auto& [number, expected, isFound, why] : rows) {
            CString text = kBefore;
            EXPECT_EQ(text.LoadString(number), isFound) << number << ": " << why;
            EXPECT_EQ(text, expected) << number << ": " << why;
        }
    }
    Loaded(12);  // has the slot of 13
    for (CString text : {CString(u"first"), CString(u"second")}) {
        EXPECT_FALSE(text.LoadString(13));
        EXPECT_EQ(text, u"first") << "the slot keeps what the string was at the first look-up";
    }
    EXPECT_EQ(NumStrRes(), 8);
    EXPECT_EQ(CString(reinterpret_cast<const char*>(12)), u"entry 500");
    CFRelease(std::exchange(CString::m_arrayOfStringTables, nullptr));
    CString formatted;
    formatted.Format(4711U, 3, u"four");
    EXPECT_EQ(formatted, u"3 of four");
    formatted.Format(Loaded(4711).GetAsUniCharStr(), 5, u"six");
    EXPECT_EQ(formatted, u"5 of six");
}

TEST_F(StringResources, AWriteToWhatWasLoadedStaysOutOfTheCache) {
    Open({{"STR ", 9, Pascal("nine")}});
    CString text;
    text.LockBuffer();
    ASSERT_TRUE(text.LoadString(9));
    text.SetAt(0, 'x');
    EXPECT_EQ(Loaded(9), u"nine");
}

TEST_F(StringResources, TheIndexIsFoundOnceAndOnRequest) {
    EXPECT_EQ(Loaded(50), u"50");
    const short first = Open({{"STRm", 0, Index({{50, 1}, {52, 1}})}, {"STR#", 200, List({"a", "b"})}});
    EXPECT_EQ(Loaded(52), u"52") << "opened after the first look-up";
    EXPECT_EQ(NumStrRes(), 0);
    InitStrResTable();
    EXPECT_EQ(NumStrRes(), 2);
    EXPECT_EQ(Loaded(50), u"50") << "the slot keeps it";
    gStrResTableInited = false;
    EXPECT_EQ(Loaded(50), u"b");

    CloseResourceFile(first);
    EXPECT_EQ(NumStrRes(), 0);
    EXPECT_EQ(Loaded(52), u"52") << "the index went with its file";
    Open({{"STRm", 0, "\x01"}});
    InitStrResTable();
    EXPECT_NE(gStrResTable, nullptr);
    EXPECT_EQ(NumStrRes(), 0);
    EXPECT_EQ(Loaded(53), u"53");
}

TEST_F(StringResources, GoToHandlesAndBack) {
    const std::tuple<std::uint32_t, CString, std::string, const char*> rows[] = {
        {kLatin1Id, u"a\u20ACbcdef", "a", "ends before what the encoding does not have"},
        {kShiftJis, u"\u3042\u3044", "\x82\xA0\x82\xA2", "twice as many bytes as units"},
        {kUtf8Id, u"\u3042\u3044", "\xE3\x81\x82", "no more than twice, and whole characters"},
        {kUtf8Id, u"\U0001F600", "\xF0\x9F\x98\x80", "a pair has four"},
        {kUtf8Id, CString(u"a\0b", 3), "a", "up to the first 0"},
    };
    for (const auto& [encoding, text, bytes, why] : rows) {
        SetApplicationTextEncoding(encoding);
        char** handle = nullptr;
        EXPECT_FALSE(text.UnloadString(&handle)) << why;
        EXPECT_EQ(std::string(*handle, static_cast<std::size_t>(GetHandleSize(handle))), bytes) << why;
        EXPECT_TRUE(text.UnloadUnicodeString(&handle)) << why;
        CString back = kBefore;
        SetHandleSize(handle, GetHandleSize(handle) + 1);
        EXPECT_TRUE(back.LoadUnicodeString(handle));
        EXPECT_EQ(back, text) << "a byte left over";
        SetHandleSize(handle, static_cast<long>(bytes.size()));
        bytes.copy(*handle, bytes.size());
        EXPECT_TRUE(back.LoadString(handle)) << "that ends without a NUL";
        EXPECT_EQ(back, text.Left(back.GetLength())) << why;
        DisposeHandle(handle);
    }
    CString text = kBefore;
    EXPECT_FALSE(text.LoadString(static_cast<char**>(nullptr)) || text.LoadUnicodeString(nullptr));
    EXPECT_EQ(text, kBefore);
    char** handle = NewHandle(3);
    for (const auto& [bytes, loaded] : {std::pair("a\0b", u"a"), {"\xFF\0b", u""}}) {
        std::copy_n(bytes, 3, *handle);
        EXPECT_TRUE(text.LoadString(handle));
        EXPECT_EQ(text, loaded);
    }
    DisposeHandle(handle);
    EXPECT_TRUE(text.LoadString(handle)) << "no longer a handle";
    EXPECT_FALSE(text.UnloadString(nullptr));
}

TEST_F(StringResources, GoToNamedResourcesAndBack) {
    // In the order of this machine, and the first with a byte too many.
    const std::string bytes(reinterpret_cast<const char*>(u"AB"), 4), odd = bytes.substr(0, 3);
    const short reference = Open({{"TEXT", 128, "old", "Name"}, {"utxt", 1, odd, "Wide"}}, true);
    const auto kTextType = Code("TEXT"), kWideType = Code("utxt");
    CString text = kBefore;
    EXPECT_TRUE(text.LoadString(kTextType, u"nAME", false));
    EXPECT_EQ(text, u"old");
    EXPECT_TRUE(text.LoadString(kWideType, reinterpret_cast<const unsigned char*>("\4Wide"), true));
    EXPECT_EQ(text, u"A");
    for (const bool unicode : {false, true}) {
        EXPECT_FALSE(text.LoadString(kTextType, u"none", unicode) || text.LoadString(kTextType, nullptr, unicode));
    }
    EXPECT_TRUE(CString(u"new").UnloadString(kTextType, u"NAME", false));
    EXPECT_FALSE(CString(u"\u00E9").UnloadString(kTextType, u"\u00E9", false));
    EXPECT_FALSE(CString(u"AB").UnloadString(kWideType, reinterpret_cast<const unsigned char*>("\1w"), true));
    for (const CString& name : {CString('x', 255), CString('x', 300), CString('\xE9', 128), CString(0xD800, 1)}) {
        EXPECT_FALSE(CString(u"new").UnloadString(kTextType, name, false)) << "not a name: nothing is added below";
        EXPECT_FALSE(text.LoadString(kTextType, name, false));
    }
    EXPECT_EQ(text, u"A");
    EXPECT_FALSE(CString(u"new").UnloadString(kTextType, CString('x', 254), false));
    EXPECT_TRUE(CString(u"new").UnloadString(kTextType, CString('x', 254), false));
    ASSERT_TRUE(UpdateResourceFile(reference));
    EXPECT_EQ(Read(m_Folder / "file0"), Fork({{"TEXT", 128, "new", "Name"},
                                              {"TEXT", 129, "\xC3\xA9", "\xC3\xA9"},
                                              {"TEXT", 130, "new", std::string(254, 'x')},
                                              {"utxt", 1, odd, "Wide"},
                                              {"utxt", 128, bytes, "w"}}));
    Open({});
    EXPECT_FALSE(CString(u"x").UnloadString(kTextType, u"x", false)) << "a file for reading only takes nothing";
    EXPECT_FALSE(text.LoadString(kTextType, u"x", false));
    EXPECT_FALSE(text.LoadString(kTextType, u"Name", false)) << "only the newest file is asked";
}

}  // namespace
