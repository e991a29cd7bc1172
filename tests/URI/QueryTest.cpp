#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include <Lum/URI.h>

namespace {

using Lum::URI;

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

}  // namespace
