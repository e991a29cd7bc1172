#include <Lum/Bridges/Filesystem.h>
#include <Lum/Bridges/ICU.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using Lum::PathStyle;
using Lum::URI;
using Path = std::filesystem::path;

TEST(Bridges, PathsOfThreeStyles) {
    struct Row {
        PathStyle style;
        const char *path, *uri, *back;
    };
    for (const auto& [style, path, uri, back] : {
             Row{PathStyle::Mac, "HD:a/b:c", "file:///HD/a/b/c", "HD:a:b:c"},
             Row{PathStyle::Unix, "/home/x y", "file:///home/x%20y", "/Volumes/home/x y"},
             Row{PathStyle::Win, "C:\\x\\y", "file:///C|/x/y", "C:\\x\\y"},
             Row{PathStyle::Win, "\\\\s\\x", "file://s/x", "\\\\s\\x"},
         }) {
        EXPECT_EQ(Lum::FromPath(path, style), uri);
        EXPECT_EQ(Lum::ToPath(URI(uri), style), back);
    }
    EXPECT_EQ(Lum::ToPath(URI("http://h/a"), PathStyle::Win), Path());
}

TEST(Bridges, FilesComeBackFromTheTextOfTheirUri) {
    for (const Path path :
         {"/", "/home/x y%2F?#\\:|", "/C:/x", "/C|/x", "/C|", "/?|", "/a/../b/./", "/a//b", "/\xFF\x01", "/a;b&c="}) {
        const URI uri(Lum::FromFilePath(path).ToString(false));
        EXPECT_EQ(Lum::ToFilePath(uri).native(), path.native()) << uri;
    }
    EXPECT_EQ(Lum::FromFilePath("//host/x"), "file:///host/x");
    EXPECT_EQ(Lum::ToFilePath(URI("file://localhost/a?q#f")), "/a");
    for (const Path& path : {Path(), Path("a/b"), Path(std::string("/a\0b", 4))}) {
        EXPECT_EQ(Lum::FromFilePath(path), URI());
    }
    for (const char* text : {"file://h/a", "http:///a", "a", "file:///a%00b", "file:///a%2fb", "file:///a\\b"}) {
        EXPECT_EQ(Lum::ToFilePath(URI(text)), Path()) << text;
    }
}

TEST(Bridges, AnAliasedStringKeepsItsUnits) {
    CString text(u"\xD800 \u00E9");
    const auto* const units = Lum::AsChar16(text.GetAsUniCharStr());
    icu::UnicodeString alias = Lum::AliasUnicodeString(text);
    EXPECT_EQ(alias.getBuffer(), units);
    EXPECT_NE(Lum::ToUnicodeString(text).getBuffer(), units);
    text.SetAt(0, 'x');
    text.LockBuffer();
    EXPECT_EQ(Lum::FromUnicodeString(alias), u"\xD800 \u00E9");
    const icu::UnicodeString copy = Lum::AliasUnicodeString(text);
    text.SetAt(0, 'y');
    EXPECT_EQ(Lum::FromUnicodeString(copy), u"x \u00E9");
    alias.setCharAt(0, u'z');
    EXPECT_EQ(*units, u'\xD800');
    alias.setToBogus();
    EXPECT_EQ(Lum::FromUnicodeString(alias), CString());
    EXPECT_TRUE(Lum::AliasUnicodeString(CString()).isEmpty());
}

}  // namespace
