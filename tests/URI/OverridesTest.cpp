#include <gtest/gtest.h>

#include <string>

#include "tests/URI/Exposed.h"

namespace {

using Lum::URI;

TEST(Overrides, ChangeTheLibrarysAnswersWhereItAsksThroughTheInterface) {
    struct Derived : Exposed {
        using Exposed::Exposed;
        [[nodiscard]] bool IsDirectory() const override { return true; }
        [[nodiscard]] bool IsRelative() const override { return relative; }
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
    const std::string native = uri.ToLocalPath();
    EXPECT_TRUE(native.ends_with("mine")) << native;
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
