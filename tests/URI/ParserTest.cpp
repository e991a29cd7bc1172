#include "Source/URI/FastSplitter.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "Source/Base/Block16Plain.h"
#include "tests/Allocations.h"
#include "tests/Generated.h"
#include "tests/URI/Exposed.h"
#include "tests/URI/Table.h"

namespace {

using Lum::ExplainURI;
using Lum::URIProblemCode;
using namespace Lum::Internal;
using namespace std::string_literals;

/// "valid", or the code of the first fault with its offset and length.
std::string Explained(const std::string& text) {
    const Lum::URIProblem problem = ExplainURI(text);
    if (problem.code == URIProblemCode::kValid) {
        return "valid";
    }
    const std::array names{
        "kValid",        "kSchemeTooShort", "kSchemeNotLetters", "kBackslashInPath", "kBackslashInNonHierarchical",
        "kSchemeUnknown"};
    return names.at(static_cast<std::size_t>(problem.code)) + (' ' + std::to_string(problem.offset)) + ' ' +
           std::to_string(problem.length);
}

// Checks that every splitter agrees with the plain one, and the record. If the text has each delimiter only once and
// all of it is printed, what is printed must parse to the same record again.
void CheckText(const std::string& text, Exposed& reused) {
    URIPieces plain, fast;
    const bool isPlainRelative = SplitPlainRelative<Lum::Internal::Plain::Block16>(text, plain);
    ASSERT_EQ(SplitPlainRelative<Block16>(text, fast), isPlainRelative) << text;
    ASSERT_TRUE(!isPlainRelative || (plain == SplitURI(text) && fast == plain)) << text;
    ASSERT_TRUE(FindCommonForm<Lum::Internal::Plain::Block16>(text) == FindCommonForm<Block16>(text)) << text;
    const bool isValid = reused.ParseURI(text);
    ASSERT_EQ(isValid, ExplainURI(text).code == URIProblemCode::kValid) << text;
    ASSERT_TRUE(isValid ? reused.HoldsPiecesOf(text) : reused.Record() == kEmptyState) << text;
    ASSERT_TRUE(reused.ValidateURI()) << text;
    const bool printsAll = !reused.m_IsHierarchical || reused.m_IsRelative ||
                           (!reused.m_Authority.empty() && (reused.m_Password.empty() || !reused.m_Username.empty()));
    // A host that was put into brackets with a "]:" inside ends there when it is read again.
    const bool endsWhereItDid = reused.m_Authority.find("]:") == std::string::npos;
    if (isValid && printsAll && endsWhereItDid && std::count(text.begin(), text.end(), '?') <= 1 &&
        std::count(text.begin(), text.end(), '#') <= 1) {
        ASSERT_EQ(Exposed(reused.ToString(false)).Record(), reused.Record()) << text;
    }
}

TEST(Parser, TheTableOfUrisHolds) {
    const std::vector<TableRow> table = TableOfUris();
    EXPECT_GT(table.size(), 50U);
    for (const auto& [text, reason, record, printed] : table) {
        Exposed uri("ftp://u:p@h:1/p?q#f");
        EXPECT_EQ(uri.ParseURI(text), reason == "valid") << text;
        EXPECT_EQ(Explained(text), reason) << text;
        EXPECT_EQ(uri.Record(), record) << text;
        EXPECT_EQ(uri.ToString(false), printed) << text;
        CheckText(text, uri);
    }
    EXPECT_EQ(Exposed("http://h/a\0b?\0"s).Record(), "http|||h||/a\0b|\0|||vh"s);
    EXPECT_EQ(Explained("h\xE4:z"), "kSchemeNotLetters 1 1");
    static_assert(ExplainURI("http://h/a\\b") == Lum::URIProblem{URIProblemCode::kBackslashInPath, 10, 1});
}

TEST(Parser, EveryShortTextIsSplitByTheDefinition) {
    Exposed reused;
    Generated::EveryText("a/:?#@\\", 6, [&](const std::string& text) { CheckText(text, reused); });
    Generated::EveryText("/:[]@a", 4, [&](const std::string& text) {
        CheckText("ab://" + text, reused);
        CheckText("File://" + text + "/C:", reused);
    });
    // Around the end of a block, with delimiters in the bytes that the last two blocks share.
    Generated::EveryText("aB/:?#", 3, [&](const std::string& text) {
        for (const char* head :
             {"ab://abcdefgh", "a/bcdefghijklmno", "Abcdefghijklmn", "ab://a@Bc:d/efghijklmnopqrst"}) {
            CheckText(head + text, reused);
            CheckText(head + text + "/c", reused);
        }
    });
}

TEST(Parser, ATextOfTheObjectItselfIsReadAsACopyWouldBe) {
    for (const char* text : {"http://h/ftp://other/long-enough-for-the-heap?q", "http://h/a", "http://h/b\\c"}) {
        Exposed uri(text);
        const std::string path = uri.m_Path;
        uri.ParseURI(uri.m_Path);
        EXPECT_EQ(uri.Record(), Exposed(path).Record());
        // The host is stored before what stands in front of it.
        uri.SetAuthority("//user:pass@host-name:80/path?query");
        const std::string host = uri.m_Authority;
        uri.ParseURI(uri.m_Authority);
        EXPECT_EQ(uri.Record(), Exposed(host).Record());
        uri = "mailto:http://inner-host/path-of-some-length";
        uri = uri.m_NonHierarchical.c_str();
        EXPECT_EQ(uri, "http://inner-host/path-of-some-length");
    }
}

TEST(Parser, AllocatesOnlyWhatTheComponentsNeed) {
    const auto allocationsOf = [](Exposed& uri, const std::string& text) {
        const std::size_t before = Allocations::Count();
        uri.ParseURI(text);
        return Allocations::Count() - before;
    };
    const std::vector<std::string> texts{
        "http://a-host-of-some-length.example/a/path/of/length?and-a-long-query",
        "http://user:a-password%20with:more-to-escape;than-before@a-host-of-some-length.example:80/",
        "mailto:somebody-with-a-long-name@example.org?and-a-long-query",
        "relative/path/without/more",
        "http://1:2:3:4:5:6:7:8:90/",
    };
    Exposed fresh;
    EXPECT_EQ(allocationsOf(fresh, texts[0]), 3U);
    // Storage that a component has, it keeps, whatever the object holds in between.
    for (const std::string& text : texts) {
        for (const std::string between : {"", "ab:c", "http://u:p@h/", "c:\\dir"}) {
            Exposed uri(text);
            EXPECT_EQ(allocationsOf(uri, between), 0U) << text;
            EXPECT_EQ(allocationsOf(uri, text), 0U) << text << " after " << between;
        }
    }
}

TEST(Parser, AsksOverridesOfTheFlags) {
    struct Derived : Exposed {
        [[nodiscard]] bool IsAbsolute() const override { return m_IsValid; }
        [[nodiscard]] bool IsRelative() const override { return true; }
    };
    // The valid flag is false while the question is asked, whatever the object held before.
    Derived uri;
    for (const char* text : {"c:/dir", "unknown://h", "c:/dir", "a/b"}) {
        EXPECT_TRUE(uri.ParseURI(text)) << text;
    }
}

}  // namespace
