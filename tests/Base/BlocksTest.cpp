#include "Source/Base/Block16.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>
#include <string>

#include "Source/Base/Block16Plain.h"
#include "Source/Base/ByteSearch.h"
#include "Source/Base/CopyBytes.h"
#include "tests/Generated.h"

namespace {

TEST(Blocks, TheFastBlockAnswersAsThePlainOne) {
    const std::string bytes = Generated::EveryByte() + Generated::EveryByte();
    constexpr Lum::ByteRanges<3> ranges{{{{0x00, 0x10}, {'0', '9'}, {0x7F, 0xFF}}}};
    for (std::size_t i = 0; i < 256; ++i) {
        const auto fast = Lum::Block16::Load(bytes.data() + i);
        const auto plain = Lum::Plain::Block16::Load(bytes.data() + i);
        EXPECT_EQ(fast.Letters(), plain.Letters()) << i;
        EXPECT_EQ(fast.InAnyRange(ranges), plain.InAnyRange(ranges)) << i;
        EXPECT_EQ((fast.EqualsAny<'a', '/', '\xFF'>()), (plain.EqualsAny<'a', '/', '\xFF'>())) << i;
        const Generated::Exact start(std::string_view(bytes).substr(i, i % 17));
        EXPECT_EQ(Lum::Block16::LoadShort(start.View().data(), start.View().size()).InAnyRange(ranges),
                  Lum::Plain::Block16::LoadShort(start.View().data(), start.View().size()).InAnyRange(ranges));
        for (unsigned low = 0; low <= 0xC0; low += 12) {
            const auto from = static_cast<unsigned char>(low);
            EXPECT_EQ(fast.InRange(from, 0xC0), plain.InRange(from, 0xC0)) << i << ' ' << low;
            EXPECT_EQ(fast.Equals(static_cast<char>(from)), plain.Equals(static_cast<char>(from)));
        }
    }
}

TEST(Blocks, SearchesFindWhatTheStandardLibraryFinds) {
    std::mt19937 random(1);
    for (std::size_t size = 0; size < 70; ++size) {
        for (int round = 0; round < 40; ++round) {
            std::string text(size, 'x');
            for (int marks = round % 4; marks > 0 && size > 0; --marks) {
                text[random() % size] = '/';
            }
            const Generated::Exact exact(text);
            EXPECT_EQ(Lum::FindFirst(exact.View(), '/'), text.find('/')) << text;
            EXPECT_EQ(Lum::FindLast(exact.View(), '/'), text.rfind('/')) << text;
            EXPECT_EQ(Lum::FindFirst<Lum::Plain::Block16>(exact.View(), '/'), text.find('/')) << text;
            EXPECT_EQ(Lum::FindLast<Lum::Plain::Block16>(exact.View(), '/'), text.rfind('/')) << text;
        }
    }
}

TEST(Blocks, CopiesFillTheirRoomExactly) {
    for (std::size_t size = 0; size < 70; ++size) {
        const Generated::Exact from(Generated::EveryByte().substr(0, size));
        const auto to = std::make_unique<char[]>(size);
        EXPECT_EQ(Lum::CopyBytes(to.get(), from.View()), to.get() + size);
        EXPECT_EQ(std::string_view(to.get(), size), from.View());
    }
}

}  // namespace
