#include <Lum/CString.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "tests/Allocations.h"

namespace {

constexpr bool kIs32 = sizeof(void*) == 4;

const CStringData& Header(const CString& s) { return reinterpret_cast<const CStringData*>(s.GetAsUniCharStr())[-1]; }
CStringData& MutableHeader(const CString& s) { return const_cast<CStringData&>(Header(s)); }

TEST(StringStorage, RoomComesInClasses) {
    const struct {
        int length, room;
    } rows[] = {{1, 64},    {64, 64},   {65, 128},  {128, 128},    {129, 256},
                {257, 512}, {512, 512}, {513, 513}, {70000, 70000}};
    for (const auto& row : rows) {
        const CString s('x', row.length);
        EXPECT_EQ(Header(s).allocLength, row.room) << row.length;
        EXPECT_EQ(Header(s).dataLength, row.length);
        EXPECT_EQ(Header(s).refCount, 1);
        EXPECT_EQ(s.GetAsUniCharStr()[row.length], 0);
    }
    EXPECT_EQ(CString().GetAsUniCharStr(), _afxPchNil);
    EXPECT_EQ(CString(u"").GetAsUniCharStr(), _afxPchNil);
    EXPECT_EQ(CString('x', 0).GetAsUniCharStr(), AfxGetEmptyString().GetAsUniCharStr());
    EXPECT_EQ(&Header(CString()), _afxDataNil);
}

TEST(StringStorage, AReleaseCountsUpAndFreesOnlyALockedBuffer) {
    CString s(u"abc");
    { const CString copy(s); }
    EXPECT_EQ(Header(s).refCount, 3);
    const unsigned short* const shared = s.GetAsUniCharStr();
    s.SetAt(0, 'x');
    EXPECT_NE(s.GetAsUniCharStr(), shared);
    EXPECT_EQ(*shared, 'a') << "kept for good";

    const unsigned short* freed = nullptr;
    {
        CString locked(u"abc");
        freed = locked.LockBuffer();
        EXPECT_EQ(Header(locked).refCount, -1);
        EXPECT_NE(CString(locked).GetAsUniCharStr(), freed) << "a locked buffer is not shared";
    }
#ifndef LUM_NO_POOLS
    EXPECT_EQ(CString(u"next").GetAsUniCharStr(), freed);
#endif
    s.UnlockBuffer();
    EXPECT_EQ(Header(s).refCount, 1);
    s.LockBuffer();
    s.Empty();
    EXPECT_EQ(Header(s).allocLength, 64) << "locked, it keeps its buffer";
    EXPECT_EQ(s, u"");
}

TEST(StringStorage, ACountAtItsEndStaysThere) {
    const CString s(u"abc");
    MutableHeader(s).refCount = std::numeric_limits<std::int32_t>::max() - 1;
    for (int i = 0; i < 3; ++i) {
        const CString copy(s);
        EXPECT_EQ(copy.GetAsUniCharStr(), s.GetAsUniCharStr());
    }
    EXPECT_EQ(Header(s).refCount, std::numeric_limits<std::int32_t>::max());
}

TEST(StringStorage, NoOldTextComesToLight) {
    const std::u16string zeros(9, u'\0');
    CString s(u"an old and longer text");
    s.Delete(3, 100);
    s.ReleaseBuffer(12);
    EXPECT_EQ(s, u"an " + zeros);

    s = u"an old and longer text";
    s.Delete(3, 100);
    s.GetBufferSetLength(12);
    EXPECT_EQ(s, u"an " + zeros);

    s = u"an old and longer text";
    s = u"";
    unsigned short* const buffer = s.GetBuffer(20);
    buffer[1] = 'b';
    EXPECT_EQ(s.GetBuffer(20)[1], 'b') << "what the caller wrote stays, also when asked again";
    s.ReleaseBuffer(4);
    EXPECT_EQ(s, std::u16string_view(u"\0b\0\0", 4));
    s.ReleaseBuffer();
    EXPECT_EQ(s, u"");

    { CString(u"stale").LockBuffer(); }
    s.AllocBuffer(5);
    EXPECT_EQ(s, zeros.substr(0, 5));
    CString copy;
    CString(u"abc").AllocCopy(copy, 2, 1, 3);
    EXPECT_EQ(copy, std::u16string_view(u"bc\0\0\0", 5));
    EXPECT_EQ(CString("\xFF\xFF"), zeros.substr(0, 2)) << "bytes that are no text";
}

TEST(StringStorage, BrokenPreconditionsStayInsideTheBuffer) {
    CString s(u"abc");
    s.ReleaseBuffer(1000);
    EXPECT_EQ(s.GetLength(), 64);
    s.ReleaseBuffer(-7);
    EXPECT_EQ(s.GetLength(), 0);
    s.GetBufferSetLength(-1);
    s.AllocBuffer(-1);
    s.AssignCopy(-1, u"x");
    s.ConcatInPlace(-1, u"x");
    EXPECT_EQ(s, u"");
    EXPECT_EQ(CString(u"abc", -3), u"");
    s = u"abc";
    CString copy;
    s.AllocCopy(copy, 9, -4, -1);
    EXPECT_EQ(copy, std::u16string_view(u"abc\0\0\0\0\0\0", 9));
    s.SetAt(-1, 'x');
    s.SetAt(3, 'x');
    EXPECT_EQ(s, u"abc");
    EXPECT_EQ(s[-1] + s[3] + s[4] + s[std::numeric_limits<unsigned long long>::max()], 0);
}

TEST(StringStorage, AFailedAllocationLeavesTheStringAsItWas) {
    const std::u16string text(600, u'x');
    const auto survives = [&](auto change) {
        CString s(text);
        const CString sharer(s);
        Allocations::FailAfter(0);
        EXPECT_THROW(change(s), std::bad_alloc);
        Allocations::NeverFail();
        EXPECT_EQ(s, text);
        EXPECT_EQ(s.GetAsUniCharStr(), sharer.GetAsUniCharStr());
    };
    survives([](CString& s) { s.SetAt(0, 'y'); });
    survives([](CString& s) { s += s; });
    survives([](CString& s) { s.Insert(1, s.GetAsUniCharStr()); });
    survives([](CString& s) { s.Replace(u"x", u"yy"); });
    survives([](CString& s) { s.GetBuffer(700); });
    survives([&](CString& s) { s.AssignCopy(601, (text + u"y").c_str()); });
    survives([&](CString& s) { s.Format(u"%s%s", text.c_str(), text.c_str()); });
}

TEST(StringStorage, HostStringsAreKeptUntilTheNextWrite) {
    CString s(u"12.5x");
    EXPECT_EQ(s.GetIntValue(), 12);
    EXPECT_EQ(s.GetDoubleValue(), 12.5);
    const CFStringRef first = s.GetCFStringRef(0);
    EXPECT_EQ(Header(s).cachedCFString, first);
    CString t;
    EXPECT_TRUE(t.SetFromCFStringRef(first, 0));
    EXPECT_EQ(t, s);
    EXPECT_EQ(Header(t).cachedCFString, first);
    s.SetAt(0, '9');
    EXPECT_EQ(Header(s).cachedCFString, nullptr);
    t.SetFromCFStringRef(Header(t).cachedCFString, 0);
    EXPECT_EQ(t, u"12.5x") << "the string that its own buffer keeps";
    t.ReleaseCFStringRef(first);
    t.ReleaseCFStringRef(nullptr);
    t.SetFromCFStringRef(nullptr, 0);
    EXPECT_TRUE(t.IsEmpty());
    EXPECT_EQ(CString("\xC3\xA9"), u"\u00E9");
    t = "\xE2\x82\xAC";
    EXPECT_EQ(t, u"\u20AC");
    t = "\xFF";
    EXPECT_EQ(t, u"\u20AC") << "not text, so no change";
}

TEST(FixedAlloc, BlocksAscendAreAlignedAndNeverOverlap) {
    for (const unsigned int size : {0U, 1U, 3U, 8U, 13U, 148U, 1044U}) {
        CFixedAlloc pool(size, 5);
        const std::size_t used = std::max<std::size_t>(size, sizeof(void*));
        std::vector<unsigned char*> blocks;
        for (int i = 0; i < 12; ++i) {
            blocks.push_back(static_cast<unsigned char*>(pool.Alloc()));
            std::fill_n(blocks.back(), used, static_cast<unsigned char>(i));
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back()) % sizeof(void*), 0U);
            if (i % 5 != 0) {
                EXPECT_GE(blocks.back(), blocks[blocks.size() - 2] + used);
            }
        }
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            EXPECT_EQ(std::count(blocks[i], blocks[i] + used, i), static_cast<std::ptrdiff_t>(used));
        }
        EXPECT_EQ(pool.blockSize, size);
        EXPECT_NE(pool.plexChain->next, nullptr);
        pool.Free(nullptr);
        pool.Free(blocks[3]);
        EXPECT_EQ(pool.Alloc(), blocks[3]);
        pool.FreeAll();
        EXPECT_EQ(pool.plexChain, nullptr);
    }
    EXPECT_EQ(CFixedAlloc(8, 0).Alloc() == nullptr, false);
    CFixedAlloc huge(0xFFFFFFFF, 0xFFFFFFFF);
    EXPECT_THROW((void)huge.Alloc(), std::bad_alloc);
    EXPECT_EQ(sizeof(CStringData), kIs32 ? 16U : 24U);
}

}  // namespace
