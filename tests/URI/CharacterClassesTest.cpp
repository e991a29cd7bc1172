#include "Source/URI/CharacterClasses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

namespace {

using Lum::URI;

TEST(CharacterClasses, TheStringsAreConcatenationsInTheirOrder) {
    EXPECT_EQ(URI::URIalpha, URI::URIlowalpha + URI::URIupalpha);
    EXPECT_EQ(URI::URIuric, URI::URIreserved + URI::URIalpha + URI::URIdigit + URI::URImark);
    EXPECT_EQ(URI::URIhex, "0123456789ABCDEFabcdef");
    EXPECT_EQ(URI::URIescaped, "%xx");
    EXPECT_EQ(URI::URIdelims_real, "<>#%\"");
    EXPECT_EQ(URI::URIdelims, "<>#%\":?@");
    EXPECT_EQ(URI::URInonhierdelims, "<>#%\":?");
    EXPECT_EQ(URI::URIunwise, "{}|\\^[]`");
    EXPECT_EQ(URI::URIcontrol, URI::controlchars);
    EXPECT_EQ(URI::URIexcluded, URI::URIcontrol + URI::URIspace + URI::URIdelims + URI::URIunwise);
    EXPECT_EQ(URI::URIqueryexcluded, URI::URIexcluded + URI::URIqueryreserved);
    EXPECT_EQ(URI::URInonhierexcluded, URI::URIcontrol + " " + URI::URInonhierdelims + URI::URIunwise);
    EXPECT_EQ(sizeof(URI::controlchars), 33U);
    EXPECT_EQ(URI::controlchars[31], 0x7F);
}

TEST(CharacterClasses, TheBitmapsHoldTheBytesOfTheirStringsAndNoOthers) {
    struct Row {
        const char* name;
        const Lum::CharBitMap& bitmap;
        std::string members;
    };
    std::string high;
    for (int c = 0x80; c <= 0xFF; ++c) {
        high += static_cast<char>(c);
    }
    const std::array<Row, 5> rows{{
        {"excluded", Lum::URIexcludedBitMap, URI::URIexcluded},
        {"modified", Lum::ModifiedURIEXcludedBitMap, URI::URIexcluded + "/;"},
        {"query", Lum::URIqueryexcludedBitMap, URI::URIqueryexcluded},
        {"non-hierarchical", Lum::URInonhierexcludedBitMap, URI::URInonhierexcluded},
        {"high bytes", Lum::URIhighBytesExcludedBitMap, high},
    }};
    for (const Row& row : rows) {
        for (int c = 0; c < 256; ++c) {
            const bool listed = row.members.find(static_cast<char>(c)) != std::string::npos;
            EXPECT_EQ(row.bitmap.Contains(static_cast<unsigned char>(c)), listed) << row.name << ' ' << c;
        }
    }
}

}  // namespace
