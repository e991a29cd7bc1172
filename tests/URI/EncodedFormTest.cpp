#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <vector>

#include <Lum/CString.h>
#include <Lum/Print.h>

#include "tests/URI/Exposed.h"

namespace {

using Lum::URI;

TEST(Serialiser, UnescapesEachComponentButThePort) {
    for (const auto& [text, unescaped] : std::vector<std::array<const char*, 2>>{
             {"http://%55:%20@h:%38/a%20b?c%3D#d%23", "http://U: @h:%38/a b?c=#d#"},
             {"http://[::1]:8080/", "http://::1:8080/"},
             {"mailto:%41?%42#%43", "mailto:A?B#C"},
         }) {
        EXPECT_EQ(URI(text).ToString(true), unescaped);
    }
}

TEST(Serialiser, ARelativeReferencePrintsNoAuthority) {
    URI uri("/p?q#f");
    uri.SetUsername("u");
    uri.SetAuthority("h");
    uri.SetScheme("http");
    EXPECT_EQ(uri, "/p?q#f");
    uri.SetHierState(true);
    EXPECT_EQ(uri, "http://u@h/p?q#f");
}

TEST(Serialiser, ComparesHashesAndPrintsByItsText) {
    const URI uri("HTTP://Host/%7Ea");
    EXPECT_TRUE(uri == "http://host/%7Ea" && uri != "http://host/~a" && std::string("HTTP://Host/%7Ea") != uri);
    EXPECT_TRUE(uri < URI("http://host/%7Eb") && uri > std::string("http://host/%7E") && uri > "http://host/%7E");
    EXPECT_EQ((std::unordered_set<URI>{uri, URI("http://HOST/%7Ea")}.size()), 1U);
    std::ostringstream out;
    out << uri << ' ' << URI::Escape(" ");
    EXPECT_EQ(out.str(), "http://host/%7Ea %20");
}

#ifdef __cpp_lib_format
TEST(Serialiser, PrintsByTheStandardLibrary) {
    const URI uri("ftp://me:secret@h/x");
    EXPECT_EQ(std::format("{} {:r} {:*>14r} {:.3}", uri, uri, uri, uri),
              "ftp://me:secret@h/x ftp://me@h/x **ftp://me@h/x ftp");
    EXPECT_EQ(std::format("{} {}", CString(u"\u00E9"), Lum::kRelationParent), "\u00E9 parent");
}
#endif

TEST(Serialiser, DifferentComponentsMayPrintTheSameText) {
    URI query("http://h/a#b?c"), fragment("http://h/a"), longer("http://h/a"), other("http://h/a");
    query.SetQuery("x#y", false);
    query.SetFragment("");
    fragment.SetQuery("x", false);
    fragment.SetFragment("y");
    longer.SetQuery("x#yz", false);
    other.SetQuery("x#z", false);
    EXPECT_TRUE(query == fragment && query != longer && query != other);
    // The same size, and components that are not printed.
    EXPECT_TRUE(URI("http://h/a") != URI("http://a/h") && URI("http://:p@h") == URI("http://h"));
}

TEST(Serialiser, ComparesTextsByUnsignedBytesThenByLength) {
    EXPECT_LT(URI::Compare("ab", "abc", true), 0);
    EXPECT_EQ(URI::Compare("ABC", "abc", false), 0);
    EXPECT_GT(URI::Compare("\xE9", "z", false), 0);
    EXPECT_NE(URI::Compare("\xC9", "\xE9", false), 0);
    EXPECT_LT(URI::Compare("_", "A", false), 0);
}

TEST(Serialiser, ComparesAndConvertsTheTextOfAnOverride) {
    struct Renamed : Lum::URI {
        using URI::URI;
        [[nodiscard]] std::string ToString(bool unescaped) const override {
            return "renamed:\xE9%E9" + URI::ToString(unescaped);
        }
        [[nodiscard]] bool IsHierarchical() const override { return false; }
    };
    const Renamed uri("http://h/p");
    EXPECT_EQ(uri.ToStringUTF8(), "renamed:\xE9\xE9http:");
    EXPECT_EQ(uri.ToStringUTF8Escaped(), "renamed:%E9%E9http:");
    EXPECT_TRUE(uri == "renamed:\xE9%E9http:" && uri == Renamed("http://h/p") && uri != URI("http://h/p"));
}

TEST(EncodedForm, NormalizingReadsEscapesAsBytesOfTheEncoding) {
    // Text, encoding, and the result; null if it fails and leaves the text as it was.
    for (const auto& [text, encoding, expected] : std::vector<std::array<const char*, 3>>{
             {"a%41b", "utf-8", "aAb"},
             {"%%%41", "utf-8", "%%%41"},  // the first three bytes are no escape, the rest is too short for one
             {"あ%82%A0%5C", "shift_jis", "ああ\\"},
             // Second bytes that are "\" and "|".
             {"%83%5C%83%7C", "shift_jis", "ソポ"},
             {"x%1B$B$\"%1B(By", "iso-2022-jp", "xあy"},
             {"%FF", "utf-8", ""},  // bytes that cannot be read back are no failure
             {"a", "no such", nullptr},
             {"%41", "no such", ""},
             {"é%41", "us-ascii", nullptr},
             // Converted in part: what the Transcoder gives.
             {"ab\xC3\xA9", "us-ascii", "abab"},
         }) {
        std::string normalized = text;
        EXPECT_EQ(URI::NormalizeEncoding(normalized, encoding), expected != nullptr) << text;
        EXPECT_EQ(normalized, expected == nullptr ? text : expected) << text;
    }
}

TEST(EncodedForm, ForceEscapeGivesWhatTheSettersGive) {
    for (const auto& [text, record] : std::vector<std::array<const char*, 2>>{
             {"http://%41h%3Ax/%41%2f b?%71 =&#%72 ^", "http|||ah%3Ax||/A/%20b|q%20=&|r%20%5E||vh"},
             {"http://u%41:p%41@h:8%30/", "http|u%41|pA|h|80|/||||vh"},
             {"mailto:%41@b c%3f?%61^#%62|", "mailto||||||a%5E|b%7C|A@b%20c%3F|v"},
             {"%61?b", "|||||a|b|||vrh"},
             {"file:///C|/%41|", "file|||||/C|/A%7C||||vh"},
         }) {
        Exposed uri{text};
        uri.ForceEscape();
        EXPECT_EQ(uri.Record(), record) << text;
    }
}

TEST(EncodedForm, ReadsAndWritesAnEncoding) {
    for (const auto& [text, encoding, record, written] : std::vector<std::array<const char*, 4>>{
             {"ftp://%83%5C:x@h/\x83\x5C?%83%5C#%83%7C", "shift_jis", "ftp|ソ|x|h||/ソ|ソ|ポ||vh",
              "ftp://\x83\x5C:x@h/\x83\x5C?\x83\x5C#\x83\x7C"},
             {"http://h/\x1B$B$\"\x1B(B%2Fx", "iso-2022-jp", "http|||h||/あ/x||||vh", "http://h/\x1B$B$\"\x1B(B/x"},
             {"mailto:%82%A0?a%41#b", "shift_jis", "mailto||||||aA|b|あ|v", "mailto:\x82\xA0?aA#b"},
             {"c:/x", "utf-8", "unknown|||||||||", "unknown:"},  // no URI, but nothing that cannot be converted
         }) {
        Exposed uri{"http://u:p@old:1/x?y#z"};
        EXPECT_TRUE(uri.FromEncodedString(text, encoding)) << text;
        EXPECT_EQ(uri.Record(), record) << text;
        EXPECT_EQ(uri.ToEncodedString(encoding), written) << text;
    }
    // The parser decodes a password's escapes itself: what they leave is no UTF-8, and nothing of it can
    // be converted.
    Exposed uri{"http://h/"};
    EXPECT_FALSE(uri.FromEncodedString("ftp://u:%83%5C@h/", "shift_jis"));
    EXPECT_EQ(uri.Record(), kEmptyState);
    EXPECT_EQ(uri.ToEncodedString("no such"), "");
}

// There is one operation, which an override replaces for every caller.
static_assert(std::is_same_v<decltype(&URI::ToEncodedString), URI::StringProxy (URI::*)(URI::StringProxy)>);

TEST(EncodedForm, AdaptersConvertToStringsOfUnits) {
    std::u16string wide;
    URI::StringRefProxy target(wide);
    target = std::string("h\xC3\xA9");
    EXPECT_EQ(wide, u"hé");
    target = std::string("\xFF");
    EXPECT_EQ(wide, u"");
    const CString name = URI("http://h/%C3%A9.txt").GetFilename(true);
    EXPECT_EQ(name, u"é");
    EXPECT_EQ(CString(URI::StringProxy(std::string("a\0b", 3))), u"a");
}

}  // namespace
