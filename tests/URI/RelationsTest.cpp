#include "Source/URI/Relations.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/Generated.h"
#include "tests/URI/Exposed.h"

namespace {

using Lum::URI;

/// Installs itself as long as it lives.
struct Installed : Lum::URIResolver {
    Installed() : before(URI::SetResolver(this)) {}
    ~Installed() override { URI::SetResolver(before); }
    URI Resolve(const URI& uri) override {
        ++asked;
        return uri;
    }
    Lum::URIResolver* before;
    int asked = 0;
};

TEST(Relations, TwoUrisAreTheSameAboveBelowOrUnrelated) {
    struct Row {
        const char* a;
        const char* b;
        int withCase, withoutCase;
    };
    for (const Row& row : std::vector<Row>{
             {"http://h/a/b", "http://h/a", 1, 1},
             {"http://h/a", "http://h/a/b", 3, 3},
             {"http://h/a/b", "http://h/a/b", 2, 2},
             {"http://h/a", "http://h/a/", 0, 0},
             {"http://h/a/b/", "http://h/a", 1, 1},
             {"http://h/", "http://h", 2, 2},
             {"http://h/", "http://h/a", 3, 3},
             {"http://h/A/b", "http://h/a", 0, 1},
             {"http://h/ab", "http://h/a", 0, 0},
             {"http://h/a?x#y", "http://u:p@h:80/%61", 2, 2},
             {"http://h:80/a", "http://h:081/a", 0, 0},
             {"https://h:443/a", "https://h/a", 0, 0},
             {"http://h/a", "https://h/a", 0, 0},
             {"http://h/a", "http://g/a", 0, 0},
             {"mailto:a", "mailto:a?x", 2, 2},
             {"mailto:a", "mailto:A", 0, 0},
             {"http:a", "http://a", 0, 0},
             {"a/b", "a/b", 0, 0},
         }) {
        for (const bool isResolved : {false, true}) {
            const auto resolver = isResolved ? std::make_unique<Installed>() : nullptr;
            EXPECT_EQ(URI(row.a).GetRelation(URI(row.b), true), row.withCase) << row.a << ' ' << row.b;
            EXPECT_EQ(URI(row.a).GetRelation(URI(row.b), false), row.withoutCase) << row.a << ' ' << row.b;
            EXPECT_EQ(URI::GetRelationByString(row.a, row.b), row.withCase) << row.a << ' ' << row.b;
        }
    }
}

TEST(Relations, TheNearestDirectoryAboveBoth) {
    struct Row {
        const char* a;
        const char* b;
        const char* parent;
    };
    for (const Row& row : std::vector<Row>{
             {"http://h/a/b/c", "http://h/a/d", "http://h/a/"},
             {"http://h/a/b/", "http://h/a/b/c?x#y", "http://h/a/b/"},
             {"http://h/a/b/c", "http://h/a", "http://h/"},
             {"http://u@h:1/a/b", "http://g/a/b", "http://u@h:1/"},
             {"http://h", "http://h/a", "http://h"},
             {"a/b", "http://h/a", "unknown:"},
             {"mailto:a", "mailto:b", "mailto:"},
             {"file:///C|/a/b", "file:///C|/c", "file:///C|/"},
         }) {
        EXPECT_EQ(URI(row.a).GetCommonParent(URI(row.b), true), row.parent) << row.a << ' ' << row.b;
        EXPECT_EQ(URI::GetCommonParentByString(row.a, row.b, true), row.parent) << row.a << ' ' << row.b;
    }
    EXPECT_EQ(URI("http://h/A/b").GetCommonParent(URI("http://h/a/c"), false), "http://h/A/");
    // The empty state becomes relative as it is reduced to its directory.
    EXPECT_EQ(URI().GetCommonParent(URI("http://h/"), true), "unknown:");
    EXPECT_EQ(URI("http://h/a/b").GetCommonParent(URI(), true), "http://h/");
    const URI uri("http://h/a/b");
    EXPECT_EQ(uri.GetCommonParent(uri, true), "http://h/a/");
}

TEST(Relations, ClimbingAtOnceEndsWhereClimbingStepByStepDoes) {
    std::vector<Exposed> uris;
    Generated::EveryText("aA/%", 4, [&](const std::string& path) {
        for (const char* start : {"http://h", "file://", "mailto:x"}) {
            Exposed uri(start);
            uri.SetPath(path);
            uris.push_back(uri);
        }
    });
    Exposed odd("file:///x");
    odd.m_Path = "%41|/a/b";
    uris.push_back(odd);
    for (std::size_t i = 0; i < uris.size(); ++i) {
        const Exposed& a = uris[i];
        const Exposed& b = uris[(i * 7919 + 13) % uris.size()];
        for (const bool caseSensitive : {false, true}) {
            const std::string atOnce = a.GetCommonParent(b, caseSensitive).ToString(false);
            const Installed resolver;
            ASSERT_EQ(atOnce, a.GetCommonParent(b, caseSensitive).ToString(false)) << a << ' ' << b;
        }
    }
}

TEST(Relations, AResolverMayAskAndReplaceItselfMeanwhile) {
    struct Replacing : Installed {
        URI Resolve(const URI& uri) override {
            URI::SetResolver(before);
            EXPECT_EQ(uri.GetRelation(uri, true), Lum::kRelationSame);
            return URI("http://h/other");
        }
    };
    const Replacing resolver;
    EXPECT_EQ(URI("http://h/a").GetRelation(URI("http://h/other"), true), Lum::kRelationSame);
    EXPECT_EQ(URI("http://h/a").GetRelation(URI("http://h/other"), true), Lum::kRelationNone);
}

TEST(Relations, AuthoritiesCompareByHostAndWrittenPort) {
    EXPECT_TRUE(URI::CompareAuthority("http://u@H/a", "ftp://h/b"));
    EXPECT_TRUE(URI::CompareAuthority("http://[::1]/", "http://::1/"));
    EXPECT_FALSE(URI::CompareAuthority("http://h", "http://h:80"));
    EXPECT_TRUE(URI::CompareAuthority("a", "mailto:b"));
    EXPECT_TRUE(URI("http://h/a/%62/c").IsUnderDirectory("b"));
    EXPECT_TRUE(URI("http://h/a/b").IsUnderDirectory("b"));
    EXPECT_FALSE(URI("http://h/a/bb/c").IsUnderDirectory("b"));
    EXPECT_FALSE(URI("http://h/a/b").IsUnderDirectory("B"));
    EXPECT_FALSE(URI("http://h/a//b").IsUnderDirectory(""));
}

TEST(Relations, AReferenceLeadsFromTheBaseToTheTarget) {
    struct Row {
        const char* target;
        const char* base;
        const char* reference;  // null if there is none
    };
    for (const Row& row : std::vector<Row>{
             {"http://h/a/b/c", "http://h/a/d", "b/c"},
             {"http://h/a/x", "http://h/a/b/c", "../x"},
             {"http://h/a/", "http://h/a/", "./"},
             {"http://h/a/b", "http://h/a/b", "b"},
             {"http://h/x/y/", "http://h/a/b/", "../../x/y/"},
             {"http://h/A/b?q%26#f", "http://h/a/c", "../A/b?q&#f"},
             {"http://u:p@h/a%7Eb", "HTTP://h/", "a~b"},
             {"http://h/", "http://h/a/b/c", "../.."},
             {"http://h/a", "http://h/a/b/c", ".."},
             {"http://h/a:b", "http://h/", "a%3Ab"},
             {"http://h:80/a", "http://h/a", nullptr},
             {"http://h/a", "https://h/a", nullptr},
             {"http://h/a", "a", nullptr},
             {"a/b", "http://h/a", "a/b"},
             {"mailto:a", "mailto:b", "./"},
         }) {
        URI uri(row.target);
        EXPECT_EQ(uri.MakeRelativeURI(URI(row.base), true), row.reference != nullptr) << row.target << ' ' << row.base;
        EXPECT_EQ(uri, row.reference == nullptr ? row.target : row.reference) << row.target << ' ' << row.base;
    }
    URI uri("http://h/A/b");
    EXPECT_TRUE(uri.MakeRelativeURI(URI("http://h/a/c"), false));
    EXPECT_EQ(uri, "b");
    URI same("http://h/a/b?x");
    EXPECT_TRUE(same.MakeRelativeURI(same, true));
    EXPECT_EQ(same, "b?x");
}

TEST(Relations, AReferenceResolvedAgainLeadsBack) {
    const std::vector<const char*> paths{"/",        "/a",       "/a/",      "/a/b",   "/a/b/c.html", "/a/b/d%20e/",
                                         "/x%2Fy/z", "/~me/%41", "/a:b/c@d", "/%E9/é", "/index.php",  "/a/b/c.html/"};
    for (const char* target : paths) {
        for (const char* base : paths) {
            const URI original(std::string("http://host:8080") + target + "?a=1&b=%20#part");
            const URI from(std::string("http://host:8080") + base + "?ignored");
            URI uri = original;
            ASSERT_TRUE(uri.MakeRelativeURI(from, true)) << target << ' ' << base;
            ASSERT_TRUE(uri.MakeAbsoluteURI(from)) << target << ' ' << base;
            // A target that is named like a directory above the base is reached as that directory.
            const bool isReachedAsDirectory = from.GetPath().starts_with(original.GetPath() + '/');
            URI expected = original;
            expected.SetPath(original.GetPath() + (isReachedAsDirectory ? "/" : ""));
            EXPECT_EQ(uri.GetRelation(expected, true), Lum::kRelationSame) << target << ' ' << base;
            EXPECT_EQ(uri.GetQuery(true), original.GetQuery(true));
            EXPECT_EQ(uri.GetFragment(), original.GetFragment());
        }
    }
}

}  // namespace
