#include <Lum/CString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <vector>

namespace {

static_assert(sizeof(CStringData) == (sizeof(void*) == 4 ? 16 : 24));

const CStringData& Header(const CString& s) { return reinterpret_cast<const CStringData*>(s.GetAsUniCharStr())[-1]; }

TEST(StringStorage, EveryEmptyStringHasTheOneEmptyBuffer) {
    for (const CString& s : {CString(), CString(u""), CString('x', 0), AfxGetEmptyString()}) {
        EXPECT_TRUE(s.GetAsUniCharStr() == _afxPchNil && &Header(s) == _afxDataNil);
    }
    CString::FreeData(_afxDataNil);
}

TEST(StringStorage, AReleaseFreesOnlyALockedBuffer) {
    const unsigned short* const kept = CString(u"abc").GetAsUniCharStr();
    [[maybe_unused]] const unsigned short* const freed = CString(u"abc").LockBuffer();
    EXPECT_EQ(*kept, 'a');
#ifndef LUM_NO_POOLS
    EXPECT_EQ(CString(u"next").GetAsUniCharStr(), freed);
#endif
}

TEST(StringStorage, ACountAtItsEndStaysThere) {
    const CString s(u"abc");
    const_cast<CStringData&>(Header(s)).refCount = std::numeric_limits<std::int32_t>::max() - 1;
    for (int i = 0; i < 3; ++i) {
        const CString copy(s);
        EXPECT_EQ(copy.GetAsUniCharStr(), s.GetAsUniCharStr());
    }
    EXPECT_EQ(Header(s).refCount, std::numeric_limits<std::int32_t>::max());
}

TEST(StringStorage, UnitsThatFormatDidNotWriteAreZeros) {
    { CString('y', 611).LockBuffer(); }
    CString formatted;
    formatted.Format(u"%d%599s", 1, u"");
    formatted.ReleaseBuffer(604);
    EXPECT_EQ(formatted.Right(4), std::u16string(4, u'\0')) << "more was estimated than was written";
}

TEST(StringStorage, ACopyToBeWrittenIsClearedBehindItsText) {
    CString s(u"abc");
    const CString sharing(s);
    CString(u'x', 64).LockBuffer();  // The next buffer has its memory.
    s.ReleaseBuffer(64);
    EXPECT_EQ(s, u"abc" + std::u16string(61, u'\0'));
    s.AllocBuffer(-1);
    EXPECT_TRUE(s.IsEmpty());
    CString emptied(u"abc");
    emptied.ReleaseBuffer(0);
    CString upper(emptied), filled(emptied);
    upper.MakeUpper();
    filled.Insert(0, u"x");
    EXPECT_TRUE(upper.GetAsUniCharStr() == _afxPchNil && emptied.IsEmpty() && filled == u"x");
}

TEST(StringStorage, AHostStringIsCachedByWhatTakesItsText) {
    CString s(u"12.5x"), t;
    EXPECT_EQ(s.GetIntValue(), 12);
    EXPECT_EQ(s.GetDoubleValue(), 12.5);
    const CFStringRef first = s.GetCFStringRef(0);
    EXPECT_TRUE(t.SetFromCFStringRef(first, 0));
    EXPECT_EQ(Header(t).cachedCFString, first);
    t.SetFromCFStringRef(Header(t).cachedCFString, 0);
    EXPECT_EQ(t, u"12.5x") << "the string that its own buffer caches";
    t.ReleaseCFStringRef(first);
    t.ReleaseCFStringRef(nullptr);
    t.SetFromCFStringRef(nullptr, 0);
    EXPECT_TRUE(t.IsEmpty());
    t = "\xE2\x82\xAC";
    t = "\xFF";
    EXPECT_EQ(t, u"\u20AC") << "not text, so no change";
    t = static_cast<const char*>(nullptr);
    EXPECT_TRUE(t.IsEmpty());
    CFStringGetLPWSTR(first, static_cast<unsigned short*>(nullptr), 8, 0);
}

TEST(FixedAlloc, BlocksAreAlignedNeverOverlapAndComeBack) {
    for (const unsigned int size : {0U, 3U, 8U, 13U, 1044U}) {
        CFixedAlloc pool(size, 5);
        const std::size_t used = std::max<std::size_t>(size, sizeof(void*));
        std::vector<unsigned char*> blocks;
        for (unsigned char i = 0; i < 12; ++i) {
            blocks.push_back(static_cast<unsigned char*>(pool.Alloc()));
            std::fill_n(blocks.back(), used, i);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back()) % sizeof(void*), 0U);
            EXPECT_TRUE(i % 5 == 0 || blocks[i] >= blocks[i - 1U] + used) << "they ascend";
        }
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            EXPECT_EQ(std::count(blocks[i], blocks[i] + used, i), static_cast<std::ptrdiff_t>(used));
        }
        pool.Free(nullptr);
        pool.Free(blocks[3]);
        EXPECT_EQ(pool.Alloc(), blocks[3]);
        pool.FreeAll();
        EXPECT_EQ(pool.plexChain, nullptr);
    }
    CFixedAlloc huge(0xFFFFFFFF, 0xFFFFFFFF);
    EXPECT_THROW((void)huge.Alloc(), std::bad_alloc);
}

}  // namespace
