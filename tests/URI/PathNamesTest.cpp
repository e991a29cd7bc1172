#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include <Lum/Platform.h>

#include "Mac/FileSystemPaths.h"
#include "Platform/CoreFoundation/CFString.h"
#include "tests/URI/Exposed.h"

namespace {

using Lum::URI;

TEST(PathNames, OfFilesAndDirectories) {
    struct Row {
        const char* path;
        const char* name;
        const char* stem;
        const char* extension;
        const char* component;
        const char* afterRemoval;
    };
    for (const Row& row : std::vector<Row>{
             {"/a/b.txt", "b.txt", "b", ".txt", "b.txt", "/a/"},
             {"/a/b.tar.gz", "b.tar.gz", "b.tar", ".gz", "b.tar.gz", "/a/"},
             {"/a/.profile", ".profile", "", "", ".profile", "/a/"},
             {"/a/b.", "b.", "b", ".", "b.", "/a/"},
             {"/a.b/c", "c", "c", "", "c", "/a.b/"},
             {"/a/b%20c%2Fd.x", "d.x", "d", ".x", "d.x", "/a/b%20c/"},
             {"/a/b/", "", "", "", "b", "/a/"},
             {"/a%2F", "", "", "", "", "/a/"},
             {"//", "", "", "", "", "/"},
             {"/", "", "", "", "", "/"},
         }) {
        URI uri(std::string("http://h") + row.path + "?q#f");
        EXPECT_EQ(uri.GetFilename(false), row.name) << row.path;
        EXPECT_EQ(uri.GetFilename(true), row.stem) << row.path;
        EXPECT_EQ(uri.GetExtension(false), row.extension) << row.path;
        EXPECT_EQ(uri.GetExtension(true), row.extension + (row.extension[0] == '.' ? 1 : 0)) << row.path;
        EXPECT_EQ(uri.GetLastPathComponent(), row.component) << row.path;
        EXPECT_EQ(uri.RemoveLastPathComponent(), row.component) << row.path;
        EXPECT_EQ(uri, std::string("http://h") + row.afterRemoval) << row.path;
    }
    for (const char* type : {"txt", ".TXT", "name.Txt", "a.b.txt"}) {
        EXPECT_TRUE(URI("http://h/b.txt").IsOfFileType(type)) << type;
        EXPECT_FALSE(URI("http://h/b.txt/").IsOfFileType(type)) << type;
    }
    EXPECT_FALSE(URI("http://h/b").IsOfFileType(""));
    EXPECT_FALSE(URI("http://h/b.").IsOfFileType("."));
}

TEST(Queries, AreReadAndWrittenAsMaps) {
    struct Row {
        const char* query;
        std::map<std::string, std::string> pairs;
        const char* written;
    };
    for (const Row& row : std::vector<Row>{
             {"", {}, ""},
             {"b=2&a=1&b=3", {{"a", "1"}, {"b", "3"}}, "a=1&b=3"},
             {"x", {{"x", ""}}, "x="},
             {"q=a+b%2Bc=d", {{"q", "a b+c=d"}}, "q=a%20b%2Bc%3Dd"},
             {"&a=1&", {{"", ""}, {"a", "1"}}, "=&a=1"},
             {"=v&%4", {{"", "v"}, {"%4", ""}}, "=v&%254="},
         }) {
        URI uri("http://h");
        uri.SetQuery(row.query, false);
        std::map<std::string, std::string> pairs{{"old", "pair"}};
        uri.GetQueryByMap(pairs);
        EXPECT_EQ(pairs, row.pairs) << row.query;
        uri.SetQueryByMap(pairs);
        EXPECT_EQ(uri.GetQuery(false), row.written) << row.query;
    }
    URI uri("http://h?%6B=1&k=2&K=3");
    std::string value = "untouched";
    EXPECT_FALSE(uri.GetQueryValue("kk", value));
    EXPECT_EQ(value, "untouched");
    EXPECT_TRUE(uri.GetQueryValue("k", value));
    EXPECT_EQ(value, "2");
    uri.SetQueryValue("k", "v w&x");
    EXPECT_EQ(uri, "http://h?K=3&k=v%20w%26x");
    EXPECT_EQ(URI::QueryEscape("/;a+"), "%2F;a%2B");
    EXPECT_EQ(URI::QueryUnescape("%2B+"), "+ ");
}

TEST(LocalPaths, FromTheThreeStyles) {
    struct Row {
        void (URI::*from)(URI::StringProxy);
        const char* path;
        const char* uri;
    };
    for (const Row& row : std::vector<Row>{
             {&URI::LocalPathToURIWin, "C:\\Documents\\a b.txt", "file:///C|/Documents/a%20b.txt"},
             {&URI::LocalPathToURIWin, "C:", "file:///C%7C"},
             {&URI::LocalPathToURIWin, "\\\\Server\\share:x", "file://server/share%7Cx"},
             {&URI::LocalPathToURIWin, "\\\\server", "file://server"},
             {&URI::LocalPathToURIWin, "//", "file://"},
             {&URI::LocalPathToURIWin, "\\x", "file:///x"},
             {&URI::LocalPathToURIUnix, "", "file:///"},
             {&URI::LocalPathToURIUnix, "a/b%", "file:///a/b%25"},
             {&URI::LocalPathToURIUnix, "\\a", "file:///%5Ca"},
             {&URI::LocalPathToURIMac, "HD:Users:me:", "file:///HD/Users/me/"},
             {&URI::LocalPathToURIMac, ":x::y", "file:///x//y"},
             {&URI::LocalPathToURI, "a:b", "file:///a/b"},
         }) {
        URI uri("http://u:p@h:1/x?q#f");
        (uri.*row.from)(row.path);
        uri.SetUsername("");
        EXPECT_EQ(uri, row.uri) << row.path;
    }
}

TEST(LocalPaths, ToTheThreeStyles) {
    struct Row {
        const char* uri;
        const char* win;
        const char* mac;
        const char* posix;
    };
    for (const Row& row : std::vector<Row>{
             {"file:///C|/Program%20Files/x", "C:\\Program Files\\x", "C|:Program Files:x",
              "/Volumes/C|/Program Files/x"},
             {"file://server/share/x", "\\\\server\\share\\x", "", ""},
             {"file://localhost/ab:c/d", "\\\\localhost\\ab:c\\d", "Macintosh HD:ab/c:d", ""},
             {"file://localhost/Volumes/Disk/x/", "\\\\localhost\\Volumes\\Disk\\x\\", "Disk:x", ""},
             {"file://localhost/", "\\\\localhost\\", "Macintosh HD", ""},
             {"file:///Macintosh%20HD/x", "Macintosh HD\\x", "Macintosh HD:x", "/x"},
             {"file:///Disk/%E2%82%AC", "Disk\\\xE2\x82\xAC", "Disk:\xE2\x82\xAC", "/Volumes/Disk/\xE2\x82\xAC"},
             {"file:///Disk/%FF", "Disk\\\xFF", "Disk:\xFF", ""},  // no UTF-8 to ask the host with
             {"file:///", "", "", ""},
             {"a/b|c", "a\\b|c", ":a:b|c", "a/b|c"},
             {"mailto:x", "", "", ""},
         }) {
        const URI uri(row.uri);
        EXPECT_EQ(uri.ToLocalPathWin(), row.win) << row.uri;
        EXPECT_EQ(uri.ToLocalPathMac(), row.mac) << row.uri;
        EXPECT_EQ(uri.ToLocalPath(), row.mac) << row.uri;
        EXPECT_EQ(uri.ToLocalPathUnix(), row.posix) << row.uri;
    }
}

TEST(LocalPaths, TheStartupVolumeHasAName) {
    Lum::Platform::SetStartupVolumeName("\xE6\x97\xA5\xE6\x9C\xAC");
    EXPECT_EQ(URI("file://localhost/").ToLocalPathMac(), "\xE6\x97\xA5\xE6\x9C\xAC");
    EXPECT_EQ(URI("file:///%E6%97%A5%E6%9C%AC/x").ToLocalPathUnix(), "/x");
    EXPECT_EQ(URI("file:///Macintosh%20HD").ToLocalPathUnix(), "/Volumes/Macintosh HD");
    Lum::Platform::SetStartupVolumeName("Macintosh HD");
    EXPECT_EQ(Mac::ColonToPosixPath(":x"), "");
    EXPECT_EQ(Mac::ColonToPosixPath("Macintosh HD"), "/");
    EXPECT_EQ(Mac::PosixToColonPath(""), "");
}

TEST(LocalPaths, TheHostsStringsAreCountedAndStrict) {
    struct Row {
        const char* text;
        CFIndex length;  // -1 if it is not UTF-8
    };
    for (const Row& row : std::vector<Row>{{"", 0},
                                           {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", 5},
                                           {"\xC0\x80", -1},
                                           {"\xED\xA0\x80", -1},
                                           {"\xF4\x90\x80\x80", -1},
                                           {"\xE2\x82", -1},
                                           {"\x80", -1}}) {
        const CFStringRef string = CFStringCreateWithCString(kCFAllocatorDefault, row.text, kCFStringEncodingUTF8);
        ASSERT_EQ(string != nullptr, row.length >= 0) << row.text;
        if (string != nullptr) {
            EXPECT_EQ(CFRetain(string), string);
            CFRelease(string);
            EXPECT_EQ(CFStringGetLength(string), row.length);
            std::string buffer(std::string(row.text).size() + 1, 'x');
            const auto size = static_cast<CFIndex>(buffer.size());
            EXPECT_EQ(CFStringGetCString(string, buffer.data(), size - 1, kCFStringEncodingUTF8), 0);
            EXPECT_NE(CFStringGetCString(string, buffer.data(), size, kCFStringEncodingUTF8), 0);
            EXPECT_STREQ(buffer.c_str(), row.text);
            CFRelease(string);
        }
    }
}

TEST(Overrides, ChangeTheLibrarysAnswersWhereItAsksThroughTheInterface) {
    struct Derived : Exposed {
        using Exposed::Exposed;
        [[nodiscard]] bool IsDirectory() const override { return true; }
        [[nodiscard]] bool IsRelative() const override { return relative; }
        [[nodiscard]] StringProxy ToLocalPathMac() const override { return "Macintosh HD:mine"; }
        void LocalPathToURIMac(StringProxy path) override { *static_cast<URI*>(this) = path; }
        bool ChDir(StringProxy reference, bool escape) override {
            references += static_cast<const std::string&>(reference) + ' ';
            return URI::ChDir(reference, escape);
        }
        bool relative = false;
        std::string references;
    };
    Derived uri("http://h/a/b");
    EXPECT_EQ(uri.GetFilename(false), "");
    EXPECT_EQ(uri.GetExtension(false), "");
    EXPECT_EQ(uri.GetLastPathComponent(), "");  // of "/a/b" without its last character
    uri.RemoveLastPathComponent();
    EXPECT_EQ(uri.references, ".. ");
    uri.LocalPathToURI("mailto:x");
    EXPECT_EQ(uri, "mailto:x");
    EXPECT_EQ(uri.ToLocalPath(), "Macintosh HD:mine");
    EXPECT_EQ(uri.ToLocalPathUnix(), "");
    uri = "file:///x";
    EXPECT_EQ(uri.ToLocalPathUnix(), "/mine");
    // Relative by its own account, it keeps what climbs too far and is made absolute like any reference.
    uri = "http://h/a";
    uri.relative = true;
    uri.ChDir("../../b", false);
    EXPECT_EQ(uri.m_Path, "/../../b");
    EXPECT_TRUE(uri.MakeRelativeURI(URI("http://h/"), true));
    EXPECT_EQ(uri.m_Path, "/../../b");
    // The relation of two URIs asks the flags, not the interface.
    EXPECT_EQ(uri.GetRelation(uri, true), Lum::kRelationSame);
}

}  // namespace
