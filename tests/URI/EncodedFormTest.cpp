#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include <Lum/CString.h>
#include <Lum/Transcoder.h>

#include "tests/URI/Exposed.h"

namespace {

using Lum::URI;

TEST(EncodedForm, NormalizingReadsEscapesAsBytesOfTheEncoding) {
    const struct {
        const char *text, *encoding, *expected;
        bool isNormalized;
    } rows[] = {
        {"", "no such", "", true},
        {"a%41b", "utf-8", "aAb", true},
        {"%zz", "utf-8", "%zz", true},
        {"100%", "utf-8", "100%", true},
        {"%", "utf-8", "%", true},
        {"a%4", "utf-8", "a%4", true},
        {"%41%4", "utf-8", "A%4", true},
        {"%%%41", "utf-8", "%%%41", true},  // the first three bytes are no escape, the rest is too short for one
        {"%82%A0", "shift_jis", "あ", true},
        {"あ%82%A0%5C", "shift_jis", "ああ\\", true},
        // Second bytes that are "\" and "|".
        {"%83%5C%83%7C", "shift_jis", "ソポ", true},
        {"x%1B$B$\"%1B(By", "iso-2022-jp", "xあy", true},
        {"あ%1B$B$$%1B(B", "iso-2022-jp", "あい", true},
        {"%E9", "iso-8859-1", "é", true},
        {"%FF", "utf-8", "", true},  // bytes that cannot be read back are no failure
        {"a", "no such", "a", false},
        {"%41", "no such", "", true},
        {"é%41", "us-ascii", "é%41", false},
        {"aé", "us-ascii", "aa", true},  // converted in part
    };
    for (const auto& row : rows) {
        std::string text = row.text;
        EXPECT_EQ(URI::NormalizeEncoding(text, row.encoding), row.isNormalized) << row.text;
        EXPECT_EQ(text, row.expected) << row.text;
    }
}

TEST(EncodedForm, ForceEscapeGivesWhatTheSettersGive) {
    const struct {
        const char *text, *record;
    } rows[] = {
        {"http://%41h%3Ax/%41%2f b?%71 =&#%72 ^", "http|||ah%3Ax||/A/%20b|q%20=&|r%20%5E||vh"},
        {"http://u%41:p%41@h:8%30/", "http|u%41|pA|h|80|/||||vh"},
        {"mailto:%41@b c%3f?%61^#%62|", "mailto||||||a%5E|b%7C|A@b%20c%3F|v"},
        {"%61?b", "|||||a|b|||vrh"},
        {"file:///C|/%41|", "file|||||/C|/A%7C||||vh"},
    };
    for (const auto& row : rows) {
        Exposed uri{row.text};
        uri.ForceEscape();
        EXPECT_EQ(uri.Record(), row.record) << row.text;
        uri.ForceEscape();
        EXPECT_EQ(uri.Record(), row.record) << row.text << ", again";
    }
}

TEST(EncodedForm, ReadsAndWritesAnEncoding) {
    const struct {
        const char *text, *encoding, *record, *written;
    } rows[] = {
        {"ftp://h/a%82%A0", "shift_jis", "ftp|||h||/aあ||||vh", "ftp://h/a\x82\xA0"},
        {"ftp://h/a\x82\xA0", "shift_jis", "ftp|||h||/aあ||||vh", "ftp://h/a\x82\xA0"},
        {"ftp://%83%5C:x@h/\x83\x5C?%83%5C#%83%7C", "shift_jis", "ftp|ソ|x|h||/ソ|ソ|ポ||vh",
         "ftp://\x83\x5C:x@h/\x83\x5C?\x83\x5C#\x83\x7C"},
        {"http://h/\x1B$B$\"\x1B(B%2Fx", "iso-2022-jp", "http|||h||/あ/x||||vh", "http://h/\x1B$B$\"\x1B(B/x"},
        {"mailto:%82%A0?a%41#b", "shift_jis", "mailto||||||aA|b|あ|v", "mailto:\x82\xA0?aA#b"},
        {"http://h/", "no such", "|||||||||rh", ""},
        {"c:/x", "utf-8", "unknown|||||||||", "unknown:"},  // no URI, but nothing that cannot be converted
    };
    for (const auto& row : rows) {
        Exposed uri{"http://u:p@old:1/x?y#z"};
        EXPECT_TRUE(uri.FromEncodedString(row.text, row.encoding)) << row.text;
        EXPECT_EQ(uri.Record(), row.record) << row.text;
        EXPECT_EQ(uri.ToEncodedString(row.encoding), row.written) << row.text;
        const Lum::URI unchanged = uri;
        EXPECT_EQ(unchanged.ToEncodedString(row.encoding), row.written) << row.text;
    }
    // The parser decodes a password's escapes itself: what they leave is no UTF-8, and nothing of it can
    // be converted.
    Exposed uri{"http://h/"};
    EXPECT_FALSE(uri.FromEncodedString("ftp://u:%83%5C@h/", "shift_jis"));
    EXPECT_EQ(uri.Record(), kEmptyState);
    EXPECT_EQ(uri.ToEncodedString("no such"), "");
}

TEST(EncodedForm, WritesOneOfTwoTargets) {
    const URI uri("http://h\xC3\xA9/");
    std::u16string wide;
    std::string narrow = "untouched";
    uri.GetParts(wide, narrow, narrow, narrow, narrow, narrow);
    EXPECT_EQ(wide, u"http");
    URI::StringRefProxy target(wide);
    target = std::string("h\xC3\xA9");
    EXPECT_EQ(wide, u"hé");
    target = std::string("\xFF");
    EXPECT_EQ(wide, u"");
}

TEST(EncodedForm, ConvertsToStringsOfUnits) {
    using std::string_literals::operator""s;
    const CString name = URI("http://h/%C3%A9.txt").GetFilename(true);
    EXPECT_EQ(name, u"é");
    EXPECT_EQ(CString(URI::StringProxy("a\0b"s)), u"a");
    EXPECT_EQ(CString(URI::StringProxy("")), u"");
    EXPECT_EQ(CString::FromUTF8("a\0é"s), std::u16string_view(u"a\0é", 3));
    EXPECT_EQ(CString(u"a\0é", 3).ToUTF8(), "a\0é"s);
    EXPECT_EQ(CString::FromUTF8("").ToUTF8(), "");
}

}  // namespace
