#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/URI/Exposed.h"

namespace {

struct Row {
    const char* start;
    std::function<void(Exposed&)> edit;
    const char* record;
};

void Check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        Exposed uri;
        if (row.start != nullptr) {
            uri = row.start;
        }
        row.edit(uri);
        EXPECT_EQ(uri.Record(), row.record) << (row.start == nullptr ? "empty" : row.start);
    }
}

TEST(Components, SettersEscapeForTheirPlace) {
    Check({
        {"http://h", [](Exposed& u) { u.SetScheme("H t/P"); }, "h%20t/p|||h||||||vh"},
        {"http://h", [](Exposed& u) { u.SetUsername("a:/;@\xE9"); }, "http|a%3A%2F%3B%40\xE9||h||||||vh"},
        {"http://h", [](Exposed& u) { u.SetPassword("a%41"); }, "http||a%2541|h||||||vh"},
        {"http://h:1", [](Exposed& u) { u.SetAuthority("MyHost:80"); }, "http|||myhost%3A80|1|||||vh"},
        {"http://h", [](Exposed& u) { u.SetServerPort("8 0/"); }, "http|||h|8%200/|||||vh"},
        {"http://h", [](Exposed& u) { u.SetPath("/dir/a b?"); }, "http|||h||/dir/a%20b%3F||||vh"},
        {"http://h", [](Exposed& u) { u.SetQuery("a=b&c d", true); }, "http|||h|||a=b&c%20d|||vh"},
        {"http://h", [](Exposed& u) { u.SetQuery("a=b&c d", false); }, "http|||h|||a=b&c d|||vh"},
        {"http://h", [](Exposed& u) { u.SetFragment("x#y"); }, "http|||h||||x%23y||vh"},
        {"ab:c", [](Exposed& u) { u.SetNonHierarchical("a@b:c/"); }, "ab||||||||a@b%3Ac/|v"},
    });
}

TEST(Components, AnIPv6HostIsKeptInBrackets) {
    for (const auto& [value, stored, read] :
         std::vector<std::array<const char*, 3>>{{"::1", "[::1]", "::1"},
                                                 {"[::A]", "[::a]", "::a"},
                                                 {"FE80::%41", "[fe80::%41]", "fe80::%41"},
                                                 {"::", "::", "::"},
                                                 {"[]", "[]", "[]"},
                                                 {"[::1", "[::1", "[::1"},
                                                 {"a]", "a%5D", "a]"}}) {
        Exposed uri;
        uri.SetAuthority(value);
        EXPECT_EQ(uri.m_Authority, stored);
        EXPECT_EQ(uri.GetAuthority(), read);
    }
}

TEST(Components, OnlyTheDriveOfAFilePathKeepsItsBar) {
    Check({
        {"file:///", [](Exposed& u) { u.SetPath("/C|/a b"); }, "file|||||/C|/a%20b||||vh"},
        {"file:///", [](Exposed& u) { u.SetPath("/C|"); }, "file|||||/C%7C||||vh"},
        {"file:///", [](Exposed& u) { u.SetPath("/C:/a"); }, "file|||||/C%3A/a||||vh"},
        {"file:///", [](Exposed& u) { u.SetPath(" ?|/"); }, "file||||| ?|/||||vh"},
        {"http://h", [](Exposed& u) { u.SetPath("/C|/a"); }, "http|||h||/C%7C/a||||vh"},
    });
}

TEST(Components, SomeSettersBringTheFlagsUpToDateAndOthersDoNot) {
    Check({
        {"a/b", [](Exposed& u) { u.SetScheme("HTTP"); }, "http|||||a/b||||vrh"},
        {"a/b", [](Exposed& u) { u.SetScheme("http"), u.SetPath("c"); }, "http|||||c||||vh"},
        {nullptr, [](Exposed& u) { u.SetPath("a"); }, "|||||a||||vrh"},
        {nullptr, [](Exposed& u) { u.SetPath(""); }, "|||||||||rh"},
        {nullptr, [](Exposed& u) { u.SetAuthority("h"); }, "unknown|||h||||||vrh"},
        {nullptr, [](Exposed& u) { u.SetUsername("u"), u.SetQuery("q", true); }, "unknown|u|||||q|||"},
        {"mailto:x?q", [](Exposed& u) { u.SetServerPort("1"); }, "mailto||||1||q|||h"},
        {"http://u:p@h:1/p?q#f", [](Exposed& u) { u.SetNonHierarchical("x"); }, "http||||||q|f|x|v"},
        {"a/b?q", [](Exposed& u) { u.SetNonHierarchical("x"); }, "||||||q||x|"},
    });
}

TEST(Components, PartsAreSetAndReadTogether) {
    Exposed uri("ftp://u:p@h");
    uri.SetParts("HTTP", "Host", "80", "/a b", "q=1 2", "f");
    EXPECT_EQ(uri.Record(), "http|u|p|host|80|/a%20b|q=1%202|f||vh");
    std::string scheme, host, port, path, query, fragment;
    uri.GetParts(scheme, host, port, path, query, fragment);
    EXPECT_EQ(scheme + '|' + host + '|' + port + '|' + path + '|' + query + '|' + fragment,
              "http|host|80|/a b|q=1 2|f");
}

TEST(Components, GettersUnescape) {
    const Exposed uri("http://%55:%20@%48/a%2Fb%4?c%3Dd#%E9");
    EXPECT_EQ(uri.GetUsername(), "U");
    EXPECT_EQ(uri.GetPassword(), " ");
    EXPECT_EQ(uri.GetAuthority(), "H");
    EXPECT_EQ(uri.GetPath(), "/a/b%4");
    EXPECT_EQ(uri.GetQuery(true), "c=d");
    EXPECT_EQ(uri.GetQuery(false), "c%3Dd");
    EXPECT_EQ(uri.GetFragment(), "\xE9");
    EXPECT_EQ(Exposed("x%41:y").GetScheme(), "unknown");
    EXPECT_EQ(Exposed("xy:%41").GetNonHierarchical(), "A");
}

TEST(Components, ASetterTakesTheObjectsOwnText) {
    Exposed uri("http://h/a%20path-long-enough-for-the-heap");
    uri.SetPath(uri.m_Path);
    EXPECT_EQ(uri.m_Path, "/a%2520path-long-enough-for-the-heap");
    uri.SetQuery(uri.m_Path, false);
    uri.SetNonHierarchical(uri.m_Path);
    EXPECT_EQ(uri.Record(), "http||||||/a%2520path-long-enough-for-the-heap||/a%252520path-long-enough-for-the-heap|v");
}

TEST(Components, TheTypeIsAskedThroughTheInterface) {
    struct AlwaysFile : Exposed {
        [[nodiscard]] bool IsOfType(StringProxy scheme) const override { return scheme == "file"; }
    };
    AlwaysFile uri;
    uri.ParseURI("http:///x");
    uri.SetPath("/C|/ ");
    EXPECT_EQ(uri, "http:///C|/%20");
    EXPECT_TRUE(Lum::URI("http://h").IsOfType("HTTP"));
    EXPECT_FALSE(Lum::URI("http://h").IsOfType("http:"));
}

}  // namespace
