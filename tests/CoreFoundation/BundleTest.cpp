#include "Platform/CoreFoundation/CoreFoundation.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include <Lum/Platform.h>

#include "tests/Resources/Files.h"

namespace {

using Files::Number;
using namespace std::string_literals;

CFStringRef Make(const std::string& text) {
    return CFStringCreateWithCString(kCFAllocatorDefault, text.c_str(), kCFStringEncodingUTF8);
}

/// The key's string, "(none)" where the table has none.
std::string LookUp(const std::string& key, const std::string& table = "") {
    CFStringRef const keyRef = Make(key), value = Make("(none)"), name = Make(table);
    CFStringRef const answer =
        CFBundleCopyLocalizedString(CFBundleGetMainBundle(), keyRef, value, table.empty() ? nullptr : name);
    char text[300];
    EXPECT_NE(CFStringGetCString(answer, text, sizeof text, kCFStringEncodingUTF8), 0);
    for (CFStringRef const string : {keyRef, value, name, answer}) {
        CFRelease(string);
    }
    return text;
}

/// A binary list whose first object is a dictionary with references of one byte to the other objects.
std::string Binary(const std::string& references, std::vector<std::string> objects) {
    objects.insert(objects.begin(), Number(0xD0 + references.size() / 2, 1) + references);
    std::string bytes = "bplist00", offsets;
    for (const std::string& object : objects) {
        offsets += Number(bytes.size(), 2);
        bytes += object;
    }
    return bytes + offsets + std::string(6, '\0') + "\x02\x01" + Number(objects.size(), 8) + Number(0, 8) +
           Number(bytes.size(), 8);
}

std::string Xml(const std::string& content) {
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE plist PUBLIC \"-//X\" \"http://h/p.dtd\">\n\n<plist>" + content +
           "</plist>\n";
}

/// False for property lists where the library was built without them.
bool IsRead(std::string_view b) { return LUM_READS_PLIST != 0 || (!b.starts_with('<') && !b.starts_with("bplist")); }

class Bundle : public testing::Test {
protected:
    void Write(const std::string& name, const std::string& bytes) {
        Files::Write(m_Folder / name, bytes);
        Lum::Platform::SetMainBundle(m_Folder.Path());
    }
    ~Bundle() override {
        Lum::Platform::SetMainBundle("/nowhere");
        Lum::Platform::SetLocale("C");
    }
    Files::Folder m_Folder;
};

TEST_F(Bundle, AnswersFromTheFirstTableThatReads) {
    Lum::Platform::SetLocale("de_AT.UTF-8@euro");
    const std::vector<std::string> order = {"de_AT.lproj/", "de.lproj/", "en.lproj/", "Base.lproj/", ""};
    for (std::size_t i = order.size(); i-- > 0;) {
        Write(order[i] + "T.strings", "\"where\" = \"" + order[i] + "\";\"in" + order[i] + "\"=\"yes\";");
        EXPECT_EQ(LookUp("where", "T"), order[i]);
        EXPECT_EQ(LookUp("in", "T"), order[i].empty() ? "yes" : "(none)") << "the others are not asked";
    }
    Write("de_AT.lproj/T.strings", "\"where\" = ");
    EXPECT_EQ(LookUp("where", "T"), "de.lproj/");
    const std::string path = (m_Folder / "de_AT.lproj/T.strings").string();
    EXPECT_EQ(Lum::Platform::ExplainStringTable("T"), path + ": line 1: neither a string in quotes nor a word\n");
    for (const char* const locale : {"C", "POSIX", "", "../de"}) {
        Lum::Platform::SetLocale(locale);
        Lum::Platform::SetMainBundle(m_Folder.Path());
        EXPECT_EQ(LookUp("where", "T"), "en.lproj/") << locale;
    }
    Write("Resources/Base.lproj/T.strings", "where = \"in Resources\";");
    EXPECT_EQ(LookUp("where", "T"), "in Resources");
    Write("Resources/Localizable.strings", "where = default;");
    EXPECT_EQ(LookUp("where"), "default");
    Files::Write(m_Folder / "Resources/Localizable.strings", "where = changed;");
    EXPECT_EQ(LookUp("where"), "default") << "a table is read once";
    EXPECT_EQ(LookUp("where", "None"), "(none)");
    EXPECT_EQ(LookUp("where", "../Localizable"), "(none)");
    EXPECT_EQ(Lum::Platform::ExplainStringTable("None"), (m_Folder / "Resources").string() + ": no table \"None\"\n");
}

TEST_F(Bundle, GivesTheValueOrTheKeyWhereThereIsNoString) {
    Lum::Platform::SetMainBundle(m_Folder.Path());
    CFStringRef const key = Make("7"), empty = Make("");
    for (CFStringRef const given : {empty, CFStringRef{}}) {
        CFStringRef const answer = CFBundleCopyLocalizedString(CFBundleGetMainBundle(), key, given, nullptr);
        EXPECT_EQ(answer, key);
        CFRelease(answer);
    }
    CFRelease(key);
    CFRelease(empty);
    EXPECT_EQ(LookUp("7"), "(none)");
}

TEST_F(Bundle, ReadsEveryForm) {
    const std::string small = "<plist><dict><key>k</key><string>v</string></dict></plist>";
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {"\xEF\xBB\xBF\"k\" = \"v\";", "v", "UTF-8 with a mark"},
        {"\xFE\xFF\0k\0=\0\"\x20\xAC\0\"\0;"s, "\u20AC", "UTF-16, big-endian"},
        {"\xFF\xFEk\0=\0\"\0\xAC\x20\"\0;\0"s, "\u20AC", "UTF-16, little-endian"},
        {"\"k\" = \"v\xC3\xA9\";", "v\u00E9", "UTF-8"},
        {"", "(none)", "a table of nothing"},
        {"// \"k\" = \"1\";\r/* \" */\"k\"/**/=//\n\"v\" ; // end", "v", "comments"},
        {"k=v;\u2028k\u2029= \"last\";", "last", "words, blanks of every kind, and a key twice"},
        {"\"k\" = \"\\n\\t\\\"\\\\\\U1234\\q\\UD83D\\UDE00//\";", "\n\t\"\\\u1234q\U0001F600//", "escapes"},
        {"\"\\U006b\"=\"\";", "", "an escape in the key, an empty value"},
        {Xml("<dict>\n<!-- c --><key>k</key><string>&lt;v&#233;<![CDATA[<]]></string></dict>"), "<v\u00E9<", "XML"},
        {"<plist><dict><key>k</key> <string/></dict></plist>", "", "bare XML"},
        {Xml("<dict/>"), "(none)", "XML of nothing"},
        {small + std::string((1 << 20) - small.size(), ' '), "v", "the largest XML"},
        {Binary("\x01\x02", {"\x51k", "\x51v"}), "v", "binary"},
        {Binary("\x01\x02", {"\x61\0k"s, "\x62\0\xE9\x20\xAC"s}), "\u00E9\u20AC", "binary, of UTF-16"},
        {Binary("\x01\x02", {"\x51k", "\x5F\x10\x10" + std::string(16, 'v')}), std::string(16, 'v'), "a long count"},
        {Binary("\x01\x02\x03\x03", {"\x51j", "\x51k", "\x51s"}), "s", "binary, a string used twice"},
    };
    for (const auto& [bytes, expected, why] : rows) {
        Write("Localizable.strings", bytes);
        EXPECT_EQ(LookUp("k"), IsRead(bytes) ? expected : "(none)") << why;
        EXPECT_EQ(Lum::Platform::ExplainStringTable("").empty(), IsRead(bytes)) << why;
    }
}

TEST_F(Bundle, TellsWhyATableIsAbsent) {
    const std::string good = Binary("\x01\x02", {"\x51k", "\x51v"});
    const auto with = [&good](std::size_t fromEnd, const std::string& bytes) {
        return std::string(good).replace(good.size() - fromEnd, bytes.size(), bytes);
    };
    // Referred to four times, it is one byte beyond four times the list and 64 KB.
    const std::string large = "\x5F\x11" + Number(0x4000 + 54, 2) + std::string(0x4000 + 54, 'x');
    const std::tuple<std::string, std::string> rows[] = {
        {"k = v;\n\nl = v", "line 3: no \";\" behind a value"},
        {"k v;", "line 1: no \"=\" behind a key"},
        {"\nk = \"v\n\n;", "line 2: a string without closing quotes"},
        {"k = \"\\U12g4\";", "line 1: \"\\U\" without four hexadecimal digits"},
        {"/*/", "line 1: a comment without end"},
        {"k = /*", "line 1: a comment without end"},
        {"k = \"\\", "line 1: a string without closing quotes"},
        {"{k = v;}", "line 1: neither a string in quotes nor a word"},
        {"\"k\" = \"\xE9\";", "not UTF-8, nor UTF-16 with a byte order mark"},
        {"\xFE\xFF\0"s, "half a unit of UTF-16 at the end"},
        {std::string((2 << 20) + 1, ' '), "larger than any table"},
        {Xml("<dict><key>k</key><dict/></dict>"), "line 4: not a pair of key and string"},
        {Xml("<dict><key><key/></key><string/></dict>"),
         "line 4: an element that is not closed, or has elements inside"},
        {Xml("<array/>"), "line 4: the property list is no dictionary"},
        {Xml("<dict/>") + "x", "line 5: text behind the end"},
        {"<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><dict/></plist>", "line 1: declarations in the document type"},
        {"<!-- <plist>", "line 1: a part without end"},
        {"<plist><dict><key><![CDATA[k</key>", "line 1: a part without end"},
        {"<html/>", "line 1: not a property list"},
        {"<plist>\0"s, "a NUL in the property list"},
        {Xml("<dict><key>&k;</key><string/></dict>"), "a property list that cannot be read"},
        {Xml("<dict/>" + std::string(1 << 20, ' ')), "larger than any property list of strings"},
        {Xml("<dict><key>k</key><string>" + std::string(25'000, '&') + "</string></dict>"),
         "line 4: too many entities in long texts"},
        {"bplist00", "not a binary property list of version 00"},
        {with(26, "\x09"), "the property list's trailer leads outside of it"},
        {with(24, Number(4, 8)), "the property list's trailer leads outside of it"},
        {with(8, Number(good.size() - 31, 8)), "the property list's trailer leads outside of it"},
        {with(8, Number(8, 8)), "the property list's trailer leads outside of it"},
        {with(16, Number(1, 8)), "the property list is no dictionary"},
        {with(38, Number(0xFFFF, 2)), "the property list is no dictionary"},
        {Binary("\x01\x02", {"\x51k", "\x52v"}), "a key or value of the property list is no string"},
        {Binary("\x01\x02", {"\x51k", "\x62\0v"s}), "a key or value of the property list is no string"},
        {Binary("\x01\x02", {"\x51k", "\x5F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}),
         "a key or value of the property list is no string"},
        {Binary("\x01\x07", {"\x51k", "\x51v"}), "a key or value of the property list is no string"},
        {Binary("\x01\x02", {"\x51k", "\x5F"}), "a key or value of the property list is no string"},
        {Binary("\x01\x02", {"\x51k", "\x51\xE9"}), "a string of the property list is not valid text"},
        {std::string(good).replace(8, 1, "\xDE"), "the property list has more pairs than bytes for them"},
        {Binary("\1\1\1\1", {large}), "the property list refers to its strings too often"},
    };
    for (const auto& [bytes, why] : rows) {
        const std::string problem = IsRead(bytes) ? why : "a property list, which this build does not read";
        Write("Localizable.strings", bytes);
        EXPECT_EQ(LookUp("k"), "(none)") << problem;
        const std::string folder = m_Folder.Path().string();
        EXPECT_EQ(Lum::Platform::ExplainStringTable(""),
                  folder + "/Localizable.strings: " + problem + "\n" + folder + ": no table \"Localizable\"\n");
    }
    std::filesystem::create_directory(m_Folder / "Folder.strings");
    const std::string folder = m_Folder.Path().string();
    EXPECT_EQ(Lum::Platform::ExplainStringTable("Folder"),
              folder + "/Folder.strings: no file that can be opened\n" + folder + ": no table \"Folder\"\n");
}

}  // namespace
