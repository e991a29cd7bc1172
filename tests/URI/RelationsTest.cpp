// How two URIs relate, and the references that lead from one to the other.
#include "Source/URI/Paths.h"

#include <gtest/gtest.h>

#include <array>
#include <tuple>
#include <vector>

#include "Source/Base/Block16Plain.h"
#include "tests/Allocations.h"
#include "tests/Generated.h"
#include "tests/URI/Exposed.h"

namespace {

using Lum::URI;
namespace Internal = Lum::Internal;

/// A resolver that is installed as long as it lives.
struct Installed : Lum::URIResolver {
    Installed() : before(URI::SetResolver(this)) {}
    ~Installed() override { URI::SetResolver(before); }
    URI Resolve(const URI& uri) override { return uri; }
    Lum::URIResolver* before;
};

TEST(Relations, TwoUrisAreTheSameAboveBelowOrUnrelated) {
    const std::tuple<const char*, const char*, int, int> rows[] = {
        {"http://h/a/b", "http://h/a", 1, 1},
        {"http://h/a", "http://h/a/", 0, 0},
        {"http://h/", "http://h", 2, 2},
        {"http://h/", "http://h/a", 3, 3},
        {"http://h/A/b", "http://h/a", 0, 1},
        {"http://h/ab", "http://h/a", 0, 0},
        {"http://h/a?x#y", "http://u:p@h:80/%61", 2, 2},
        {"http://h:80/a", "http://h:081/a", 0, 0},
        {"http://h/a", "https://h/a", 0, 0},
        {"mailto:a", "mailto:a?x", 2, 2},
        {"mailto:a", "mailto:A", 0, 0},
        {"a/b", "a/b", 0, 0},
    };
    for (const auto& [a, b, withCase, withoutCase] : rows) {
        for (const bool isResolved : {false, true}) {
            const auto resolver = isResolved ? std::make_unique<Installed>() : nullptr;
            EXPECT_EQ(URI(a).GetRelation(URI(b), true), withCase) << a << ' ' << b;
            EXPECT_EQ(URI(a).GetRelation(URI(b), false), withoutCase) << a << ' ' << b;
            EXPECT_EQ(URI::GetRelationByString(a, b), withCase) << a << ' ' << b;
        }
    }
}

TEST(Relations, TheNearestDirectoryAboveBoth) {
    for (const auto& [a, b, parent] : std::vector<std::array<const char*, 3>>{
             {"http://h/a/b/c", "http://h/a/d", "http://h/a/"},
             {"http://u@h:1/a/b", "http://g/a/b", "http://u@h:1/"},
             {"http://h", "http://h/a", "http://h"},
             {"a/b", "http://h/a", "unknown:"},
             {"http://h/a", "a/b", "unknown:"},
             {"mailto:a", "mailto:b", "mailto:"},
             {"file:///C|/a/b", "file:///C|/c", "file:///C|/"},
         }) {
        EXPECT_EQ(URI(a).GetCommonParent(URI(b), true), parent) << a << ' ' << b;
        EXPECT_EQ(URI::GetCommonParentByString(a, b, true), parent) << a << ' ' << b;
    }
    EXPECT_EQ(URI("http://h/A/b").GetCommonParent(URI("http://h/a/c"), false), "http://h/A/");
    // The empty state becomes relative as it is reduced to its directory.
    EXPECT_EQ(URI().GetCommonParent(URI("http://h/"), true), "unknown:");
    EXPECT_EQ(URI("http://h/a/b").GetCommonParent(URI(), true), "http://h/");
}

TEST(Relations, AParentFoundAtOnceIsTheOneFoundStepByStep) {
    std::vector<Exposed> uris;
    Generated::EveryText("aA/%", 4, [&](const std::string& path) {
        for (const char* start : {"http://h", "file://", "mailto:x"}) {
            Exposed uri(start);
            uri.SetPath(path);
            uris.push_back(uri);
        }
    });
    for (const char* head : {"%4|", "%G|", "% |", "%%|", "a%|", "%-|", "%4|b%7C/", "%4|/..", "%4"}) {
        for (const char* rest : {"", "/", "/a", "/a/", "/a/A/../b/"}) {
            Exposed odd("file:///x");
            odd.m_Path = std::string(head) + rest;
            uris.push_back(odd);
            odd.m_Path[1] = '\0';
            uris.push_back(odd);
        }
    }
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

TEST(Relations, ACommonParentCostsTheSameAtEveryDepth) {
    const auto allocationsOf = [](const char* head, int depth) {
        URI uri("http://");
        std::string path = head;
        for (int i = 0; i < depth; ++i) {
            path += "/segment";
        }
        uri.ChDir(path, false);
        uri.SetScheme("file");
        const URI other("file:///elsewhere");
        const std::size_t before = Allocations::Count();
        static_cast<void>(uri.GetCommonParent(other, true));
        return Allocations::Count() - before;
    };
    for (const char* head : {"", "/C|", "%25G%7C", "%254%7C", "%25%00%7C", "%254%7Ca%7C"}) {
        EXPECT_LE(allocationsOf(head, 1000), allocationsOf(head, 10) + 10) << head;
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
    Replacing resolver;
    EXPECT_EQ(URI::SetResolver(&resolver), &resolver);
    EXPECT_EQ(URI("http://h/a").GetRelation(URI("http://h/other"), true), Lum::kRelationSame);
    EXPECT_EQ(URI("http://h/a").GetRelation(URI("http://h/other"), true), Lum::kRelationNone);
    EXPECT_EQ(URI::Resolve(URI("xy:alias")), "xy:alias");
}

TEST(Relations, AuthoritiesCompareByHostAndWrittenPort) {
    EXPECT_TRUE(URI::CompareAuthority("http://u@H/a", "ftp://h/b") && URI::CompareAuthority("a", "mailto:b") &&
                URI::CompareAuthority("http://[::1]/", "http://::1/"));
    EXPECT_FALSE(URI::CompareAuthority("http://h", "http://h:80"));
    EXPECT_TRUE(URI("http://h/a/%62/c").IsUnderDirectory("b"));
    EXPECT_FALSE(URI("http://h/a/bb/B").IsUnderDirectory("b") || URI("http://h/a//b").IsUnderDirectory(""));
}

TEST(References, OfEveryKind) {
    for (const auto& [base, reference, result] : std::vector<std::array<const char*, 3>>{
             // Of RFC 2396, appendix C. The definition below has most of those with dots.
             {"http://a/b/c/d;p?q", "?y", "http://a/b/c/?y"},
             {"http://a/b/c/d;p?q", "#s", "http://a/b/c/d;p?q#s"},
             {"http://a/b/c/d;p?q", "g;x?y#s", "http://a/b/c/g;x?y#s"},
             {"http://a/b/c/d;p?q", "../../../g", "http://a/g"},  // not "http://a/../g": nothing is above the root
             {"http://a/b/c/d;p?q", "/../g", "http://a/../g"},
             {"http://a/b/c/d;p?q", "http:g", "http:g"},
             {"http://u:p@h:1/a/b/?x#y", "c", "http://u:p@h:1/a/b/c"},
             {"http://h/a/b?x#y", "#", "http://h/a/b?x"},
             {"http://h", "c", "http://hc"},  // no leading slash to inherit
             {"http://h/a", "//o:2/p?q", "http://o:2/p?q"},
             {"a/b", "//o/p", "unknown:"},  // there is no scheme to go with it
             {"../x", "../y", "../../y"},
             {"http://h/%61/%2E%2E/b", "%2E/c%2Fd", "http://h/c/d"},
             {"http://h/a%20b/c", "d%25?e%26#f%23", "http://h/a%20b/d%25?e&#f%23"},
             {"mailto:x", "y", "mailto:y"},
             {"mailto:x", "#y", "mailto:x#y"},
             {"file:///C|/a/b", "../c", "file:///C|/c"},
         }) {
        URI uri(base);
        EXPECT_TRUE(uri.ChDir(reference, false));
        EXPECT_EQ(uri, result) << base << ' ' << reference;
    }
    URI uri("http://h/a/b");
    uri.ChDir("a b?", true);
    EXPECT_EQ(uri, "http://h/a/a%20b%3F");
    uri.ChDir(uri.ToString(false), false);
    EXPECT_FALSE(uri.MakeAbsoluteURI(URI("http://other/")));
    EXPECT_EQ(uri, "http://h/a/a%20b%3F");
    uri = "../x?y#z";
    EXPECT_FALSE(uri.MakeAbsoluteURI(URI("a/b")));
    EXPECT_TRUE(uri.MakeAbsoluteURI(URI("http://u@h/a/b/c?q")));
    EXPECT_EQ(uri, "http://u@h/a/x?y#z");
}

// The definition, on lists of segments: merge, then walk with an index.
std::string ResolveSlowly(const std::string& base, const std::string& reference, bool keepsLeadingDots) {
    std::vector<std::string> segments, more;
    bool leading = false, trailing = false, ignored = false, endsAsDirectory = false;
    URI::SplitPath(base, segments, leading, trailing);
    if (!trailing && !segments.empty()) {
        segments.pop_back();
    }
    URI::SplitPath(reference, more, ignored, trailing);
    segments.insert(segments.end(), more.begin(), more.end());
    for (std::size_t i = 0; i < segments.size();) {
        const auto at = segments.begin() + static_cast<std::ptrdiff_t>(i);
        endsAsDirectory = segments[i] == "." || segments[i] == "..";
        if (segments[i] == ".") {
            segments.erase(at);
        } else if (segments[i] != ".." || (i == 0 ? keepsLeadingDots : segments[i - 1] == "..")) {
            ++i;
        } else if (i == 0) {
            segments.erase(at);
        } else {
            segments.erase(at - 1, at + 1);
            --i;
        }
    }
    return URI::JoinPath(segments, leading, trailing || endsAsDirectory);
}

bool HasOddSegment(const std::string& path) {
    return path.find("//") != std::string::npos || path.find("/.") != std::string::npos;
}

TEST(References, EveryShortPathResolvesByTheDefinition) {
    Generated::EveryText("a/.", 6, [](const std::string& base) {
        Generated::EveryText("a/.", base.size() < 4 ? 6 : 3, [&](const std::string& reference) {
            // Around the end of a block.
            const std::string longer = "/bcdefgh/jkl" + base + reference;
            ASSERT_EQ(Internal::HasPlainSegments<Internal::Plain::Block16>(longer), !HasOddSegment(longer)) << longer;
            ASSERT_EQ(Internal::HasPlainSegments<Internal::Block16>(longer), !HasOddSegment(longer)) << longer;
            for (const bool keeps : {false, true}) {
                const std::string path = Internal::ResolvePath(base, reference, keeps);
                ASSERT_EQ(path, ResolveSlowly(base, reference, keeps)) << base << ' ' << reference;
                const auto edit = Internal::FindPathEdit(base, reference);
                ASSERT_TRUE(!edit || base.substr(0, edit->kept) + std::string(edit->added) == path)
                    << base << ' ' << reference;
            }
        });
    });
}

TEST(References, ARelativePathFoundAsAnEditIsTheOneFoundByWalking) {
    std::size_t edits = 0;
    Generated::EveryText("ab/.", 5, [&](const std::string& rest) {
        Generated::EveryText("a/", 6, [&](const std::string& base) {
            std::string target = '/' + rest;
            if (const auto edit = Internal::FindRelativeEdit(target, base)) {
                ++edits;
                Internal::MakeEdit(target, *edit);
                const std::string directory = base.substr(0, base.rfind('/') + 1);
                ASSERT_EQ(target, Internal::RelativePath('/' + rest, directory, true)) << rest << ' ' << base;
            }
        });
    });
    EXPECT_GT(edits, 1000U);
}

TEST(References, PathsSplitAndJoin) {
    std::vector<std::string> list;
    bool leading = false, trailing = true;
    URI::SplitPath("/", list, leading, trailing);
    EXPECT_TRUE(leading && !trailing);
    URI::SplitPath("a//./b/", list, leading, trailing);
    EXPECT_TRUE(!leading && trailing);
    EXPECT_EQ(list, (std::vector<std::string>{"a", ".", "b"}));
    EXPECT_EQ(URI::JoinPath({"a", "b"}, true, true), "/a/b/");
    EXPECT_EQ(URI::JoinPath({}, false, true), "");
    EXPECT_EQ(URI::JoinPath({"", "a", "", "b"}, false, false), "a//b");
    list = {"a/b"};
    URI::SplitPath(list[0], list);
    EXPECT_EQ(list, (std::vector<std::string>{"a/b", "a", "b"}));
}

TEST(References, AReferenceLeadsFromTheBaseToTheTarget) {
    // Target, base, and the reference; null if there is none.
    for (const auto& [target, base, reference] : std::vector<std::array<const char*, 3>>{
             {"http://h/a/b/c", "http://h/a/d", "b/c"},
             {"http://h/a/", "http://h/a/", "./"},
             {"http://h/x/y/", "http://h/a/b/", "../../x/y/"},
             {"http://h/A/b?q%26#f", "http://h/a/c", "../A/b?q&#f"},
             {"http://h/", "http://h/a/b/c", "../.."},
             {"http://h/a", "http://h", "a"},
             {"http://h/a//../b", "http://h/", "a/../b"},
             {"http://h/a:b", "http://h/", "a%3Ab"},
             {"http://h/a?%4", "http://h/b", "a?%254"},
             {"http://h%61/a", "http://HA/b", "a"},
             {"http://h:80/a", "http://h/a", nullptr},
             {"http://h/a", "a", nullptr},
             {"a/b", "http://h/a", "a/b"},
             {"mailto:a", "mailto:b", "./"},
         }) {
        URI uri(target);
        EXPECT_EQ(uri.MakeRelativeURI(URI(base), true), reference != nullptr) << target << ' ' << base;
        EXPECT_EQ(uri, reference == nullptr ? target : reference) << target << ' ' << base;
    }
    URI uri("http://h/A/b?x");
    EXPECT_TRUE(uri.MakeRelativeURI(URI("http://h/a/c"), false));
    EXPECT_EQ(uri, "b?x");
}

}  // namespace
