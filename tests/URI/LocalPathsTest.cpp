#include <Lum/Platform.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include "Mac/FileSystemPaths.h"
#include "tests/URI/Exposed.h"

namespace {

using Lum::URI;

// The style that this build's unadorned operations use.
enum class Style { Win, Mac, Unix };
constexpr Style kNativePaths = Style::LUM_NATIVE_PATHS;

TEST(LocalPaths, FromTheThreeStyles) {
    using From = void (URI::*)(URI::StringProxy);
    for (const auto& [from, path, expected] : std::vector<std::tuple<From, const char*, const char*>>{
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
        (uri.*from)(path);
        uri.SetUsername("");
        EXPECT_EQ(uri, expected) << path;
    }
}

TEST(LocalPaths, ToTheThreeStyles) {
    for (const auto& [text, win, mac, posix] : std::vector<std::array<const char*, 4>>{
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
        const URI uri(text);
        EXPECT_EQ(uri.ToLocalPathWin(), win) << text;
        EXPECT_EQ(uri.ToLocalPathMac(), mac) << text;
        const char* const native = std::array{win, mac, posix}[static_cast<std::size_t>(kNativePaths)];
        EXPECT_EQ(uri.ToLocalPath(), native) << text;
        EXPECT_EQ(uri.ToLocalPathUnix(), posix) << text;
    }
}

TEST(LocalPaths, TheUnadornedOperationsUseTheNativeStyle) {
    URI uri;
    uri.LocalPathToURI("a\\b:c");
    const std::array uris{"file:///a/b%7Cc", "file:///a%5Cb/c", "file:///a%5Cb%3Ac"};
    EXPECT_EQ(uri, uris[static_cast<std::size_t>(kNativePaths)]);
    // A NUL ends the path that the host gets. User information stays.
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
    EXPECT_EQ(Lum::Internal::Mac::ColonToPosixPath(":x"), "");
    EXPECT_EQ(Lum::Internal::Mac::ColonToPosixPath("Macintosh HD"), "/");
    EXPECT_EQ(Lum::Internal::Mac::PosixToColonPath(""), "");
}

TEST(Overrides, ChangeTheLibrarysAnswersWhereItAsksThroughTheInterface) {
    struct Derived : Exposed {
        using Exposed::Exposed;
        [[nodiscard]] bool IsDirectory() const override { return true; }
        [[nodiscard]] bool IsRelative() const override { return relative; }
        [[nodiscard]] bool IsOfType(StringProxy scheme) const override { return scheme == "file"; }
        [[nodiscard]] StringProxy ToLocalPathMac() const override { return "Macintosh HD:mine"; }
        [[nodiscard]] StringProxy ToLocalPathWin() const override { return "mine"; }
        void LocalPathToURIMac(StringProxy path) override { *static_cast<URI*>(this) = path; }
        void LocalPathToURIUnix(StringProxy path) override { LocalPathToURIMac(path); }
        void LocalPathToURIWin(StringProxy path) override { LocalPathToURIMac(path); }
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
    EXPECT_EQ(uri.ToLocalPathUnix(), "");
    uri = "file:///x";
    EXPECT_EQ(uri.ToLocalPathUnix(), "/mine");
    EXPECT_TRUE(std::string(uri.ToLocalPath()).ends_with("mine"));
    uri = "http:///x";
    uri.SetPath("/C|/ ");
    EXPECT_EQ(uri.m_Path, "/C|/%20");
    // It says that it is relative: it keeps a ".." too many, and MakeRelativeURI has nothing to do.
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
