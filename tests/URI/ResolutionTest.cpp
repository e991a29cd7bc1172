#include "Source/URI/Resolution.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/Generated.h"
#include "tests/URI/Exposed.h"

namespace {

using Lum::URI;

std::string Resolved(const char* base, const std::string& reference) {
    URI uri(base);
    EXPECT_TRUE(uri.ChDir(reference, false));
    return uri.ToString(false);
}

TEST(Resolution, TheExamplesOfTheRfc) {
    struct Row {
        const char* reference;
        const char* rfc;  // RFC 2396, appendix C, behind "http://a/"
        const char* ours = nullptr;
        const char* why = nullptr;
    };
    for (const Row& row : std::vector<Row>{
             {"g:h", "", "unknown:", "one-letter scheme"},
             {"g", "b/c/g"},
             {"./g", "b/c/g"},
             {"g/", "b/c/g/"},
             {"/g", "g"},
             {"//g", "", "http://g"},
             {"?y", "b/c/?y"},
             {"g?y", "b/c/g?y"},
             {"#s", "b/c/d;p?q#s"},
             {"g#s", "b/c/g#s"},
             {"g?y#s", "b/c/g?y#s"},
             {";x", "b/c/;x"},
             {"g;x", "b/c/g;x"},
             {"g;x?y#s", "b/c/g;x?y#s"},
             {".", "b/c/"},
             {"./", "b/c/"},
             {"..", "b/"},
             {"../", "b/"},
             {"../g", "b/g"},
             {"../..", ""},
             {"../../", ""},
             {"../../g", "g"},
             {"", "b/c/d;p?q"},
             {"../../../g", "../g", "http://a/g", "extra \"..\" at the root"},
             {"../../../../g", "../../g", "http://a/g", "extra \"..\" at the root"},
             {"/./g", "./g"},
             {"/../g", "../g"},
             {"g.", "b/c/g."},
             {".g", "b/c/.g"},
             {"g..", "b/c/g.."},
             {"..g", "b/c/..g"},
             {"./../g", "b/g"},
             {"./g/.", "b/c/g/"},
             {"g/./h", "b/c/g/h"},
             {"g/../h", "b/c/h"},
             {"g;x=1/./y", "b/c/g;x=1/y"},
             {"g;x=1/../y", "b/c/y"},
             {"g?y/./x", "b/c/g?y/./x"},
             {"g?y/../x", "b/c/g?y/../x"},
             {"g#s/./x", "b/c/g#s/./x"},
             {"g#s/../x", "b/c/g#s/../x"},
             {"http:g", "", "http:g", "an absolute reference, as strict parsers have it"},
         }) {
        const std::string expected = row.ours == nullptr ? std::string("http://a/") + row.rfc : row.ours;
        EXPECT_EQ(Resolved("http://a/b/c/d;p?q", row.reference), expected) << row.reference;
    }
}

TEST(Resolution, ReferencesOfEveryKind) {
    struct Row {
        const char* base;
        const char* reference;
        const char* result;
    };
    for (const Row& row : std::vector<Row>{
             {"http://u:p@h:1/a/b/?x#y", "c", "http://u:p@h:1/a/b/c"},
             {"http://h/a/b?x#y", "#", "http://h/a/b?x"},
             {"http://h", "c", "http://hc"},  // no leading slash to inherit
             {"http://h/a", "//o:2/p?q", "http://o:2/p?q"},
             {"http://h/a", "//o/b\\c", "unknown:"},
             {"a/b", "//o/p", "unknown:"},  // there is no scheme to go with it
             {"http://h/a", "b\\c", "unknown:"},
             {"http://h/a", "MAILTO:x?y", "mailto:x?y"},
             {"a/b", "../../x", "../x"},
             {"x", "..", "../"},
             {"../x", "../y", "../../y"},
             {"http://h/a//b//c", "d", "http://h/a/b/d"},
             {"http://h/%61/%2E%2E/b", "%2E/c%2Fd", "http://h/c/d"},
             {"http://h/a/b", "%2Fc", "http://h/c"},
             {"http://h/a%20b/c", "d%25?e%26#f%23", "http://h/a%20b/d%25?e&#f%23"},
             {"mailto:x", "y", "mailto:y"},
             {"file:///C|/a/b", "../c", "file:///C|/c"},
         }) {
        EXPECT_EQ(Resolved(row.base, row.reference), row.result) << row.base << ' ' << row.reference;
    }
    URI uri("http://h/a/b");
    uri.ChDir("a b?", true);
    EXPECT_EQ(uri, "http://h/a/a%20b%3F");
    uri.ChDir(uri.ToString(false), false);
    EXPECT_EQ(uri, "http://h/a/a%20b%3F");
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

TEST(Resolution, EveryShortPathResolvesByTheDefinition) {
    Generated::EveryText("a/.", 6, [](const std::string& base) {
        Generated::EveryText("a/.", base.size() < 4 ? 6 : 3, [&](const std::string& reference) {
            for (const bool keeps : {false, true}) {
                const std::string path = Lum::ResolvePath(base, reference, keeps);
                ASSERT_EQ(path, ResolveSlowly(base, reference, keeps)) << base << ' ' << reference;
                const auto edit = Lum::FindPathEdit(base, reference);
                ASSERT_TRUE(!edit || base.substr(0, edit->kept) + std::string(edit->added) == path)
                    << base << ' ' << reference;
                // Nothing climbs above the root, and no dot segment is left.
                ASSERT_TRUE(keeps || ('/' + path + '/').find("/./") == std::string::npos);
                ASSERT_TRUE(keeps || ('/' + path + '/').find("/../") == std::string::npos);
            }
        });
    });
}

TEST(Resolution, NoPairOfShortPathsClimbsOutOrKeepsDots) {
    std::vector<std::string> paths;
    Generated::EveryText("a/.", 6, [&](const std::string& path) { paths.push_back(path); });
    for (const std::string& base : paths) {
        for (const std::string& reference : paths) {
            const std::string path = '/' + Lum::ResolvePath(base, reference, false) + '/';
            ASSERT_TRUE(path.find("/./") == std::string::npos && path.find("/../") == std::string::npos)
                << base << ' ' << reference;
        }
    }
}

TEST(Resolution, OnlyARelativeUriIsMadeAbsolute) {
    URI uri("../x?y#z");
    EXPECT_FALSE(uri.MakeAbsoluteURI(URI("a/b")));
    EXPECT_EQ(uri, "../x?y#z");
    EXPECT_TRUE(uri.MakeAbsoluteURI(URI("http://u@h/a/b/c?q")));
    EXPECT_EQ(uri, "http://u@h/a/x?y#z");
    EXPECT_FALSE(uri.MakeAbsoluteURI(URI("http://other/")));
    EXPECT_EQ(uri, "http://u@h/a/x?y#z");
}

TEST(Resolution, PathsSplitAndJoin) {
    struct Row {
        const char* path;
        std::vector<std::string> segments;
        bool leading, trailing;
        const char* joined;
    };
    for (const Row& row : std::vector<Row>{{"", {}, false, false, ""},
                                           {"/", {}, true, false, "/"},
                                           {"//", {}, true, true, "/"},
                                           {"/a//b/", {"a", "b"}, true, true, "/a/b/"},
                                           {"a/./../b", {"a", ".", "..", "b"}, false, false, "a/./../b"},
                                           {"a//", {"a"}, false, true, "a/"}}) {
        std::vector<std::string> segments{"kept"};
        bool leading = !row.leading, trailing = !row.trailing;
        URI::SplitPath(row.path, segments, leading, trailing);
        segments.erase(segments.begin());
        EXPECT_EQ(segments, row.segments) << row.path;
        EXPECT_EQ(leading, row.leading) << row.path;
        EXPECT_EQ(trailing, row.trailing) << row.path;
        EXPECT_EQ(URI::JoinPath(segments, leading, trailing), row.joined);
    }
    EXPECT_EQ(URI::JoinPath({}, false, true), "");
    EXPECT_EQ(URI::JoinPath({"", "a", "", "b"}, false, false), "a//b");
    std::vector<std::string> list{"a/b"};
    URI::SplitPath(list[0], list);
    EXPECT_EQ(list, (std::vector<std::string>{"a/b", "a", "b"}));
}

}  // namespace
