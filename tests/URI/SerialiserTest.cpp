#include <gtest/gtest.h>

#include <vector>

#include "tests/URI/Exposed.h"

namespace {

TEST(Serialiser, PrintsTheComponentsWithTheirDelimiters) {
    struct Row {
        const char* text;
        const char* escaped;
        const char* unescaped;
    };
    for (const Row& row : std::vector<Row>{
             {"http://u:p@h:80/a%20b?c%3D#d%23", "http://u:p@h:80/a%20b?c%3D#d%23", "http://u:p@h:80/a b?c=#d#"},
             {"http://[::1]:8080/", "http://[::1]:8080/", "http://::1:8080/"},
             {"http://h:%38", "http://h:%38", "http://h:%38"},
             {"file:///C|/dir", "file:///C|/dir", "file:///C|/dir"},
             {"http:///dir", "http:/dir", "http:/dir"},
             {"http://:p@h", "http://h", "http://h"},
             {"http://u@", "http:", "http:"},
             {"mailto:%41?%42#%43", "mailto:%41?%42#%43", "mailto:A?B#C"},
             {"a%2Fb?#", "a%2Fb", "a/b"},
         }) {
        const Lum::URI uri(row.text);
        EXPECT_EQ(uri.ToString(false), row.escaped) << row.text;
        EXPECT_EQ(uri.ToString(true), row.unescaped) << row.text;
    }
}

TEST(Serialiser, ARelativeReferencePrintsNoAuthority) {
    Lum::URI uri("/p?q#f");
    uri.SetUsername("u");
    uri.SetAuthority("h");
    uri.SetServerPort("1");
    EXPECT_EQ(uri, "/p?q#f");
    uri.SetScheme("http");
    EXPECT_EQ(uri, "/p?q#f");
    uri.SetHierState(true);
    EXPECT_EQ(uri, "http://u@h:1/p?q#f");
}

TEST(Serialiser, HighBytesAreDecodedOrEscaped) {
    const Lum::URI uri("http://h/%20\xC3\xA9%C3%A9%41");
    EXPECT_EQ(uri.ToStringUTF8(), "http://h/%20\xC3\xA9\xC3\xA9%41");
    EXPECT_EQ(uri.ToStringUTF8Escaped(), "http://h/%20%C3%A9%C3%A9%41");
}

TEST(Serialiser, OverridesChangeTheLibrarysOwnText) {
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
    EXPECT_TRUE(uri == "renamed:\xE9%E9http:");
}

}  // namespace
