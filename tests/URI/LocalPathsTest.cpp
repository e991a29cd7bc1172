#include <Lum/Platform.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include <Lum/URI.h>

#include "Mac/FileSystemPaths.h"

namespace {

using Lum::URI;

// The style that this build's unadorned operations use.
enum class PathStyle { Win, Mac, Unix };
constexpr PathStyle kNativePaths = PathStyle::LUM_NATIVE_PATHS;

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
        const char* const native = std::array{row.win, row.mac, row.posix}[static_cast<std::size_t>(kNativePaths)];
        EXPECT_EQ(uri.ToLocalPath(), native) << row.uri;
        EXPECT_EQ(uri.ToLocalPathUnix(), row.posix) << row.uri;
    }
}

TEST(LocalPaths, TheUnadornedOperationsUseTheNativeStyle) {
    URI uri;
    uri.LocalPathToURI("a\\b:c");
    const std::array uris{"file:///a/b%7Cc", "file:///a%5Cb/c", "file:///a%5Cb%3Ac"};
    EXPECT_EQ(uri, uris[static_cast<std::size_t>(kNativePaths)]);
    // A NUL ends what the host is asked; a user stays who was there.
    EXPECT_EQ(URI("file:///Disk/a%00b").ToLocalPathUnix(), "/Volumes/Disk/a");
    uri = "http://u:p@h:1/x";
    uri.LocalPathToURIUnix("/a");
    EXPECT_EQ(uri.GetUsername(), "u");
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

}  // namespace
