// Faults in buffers of our own pools, which the address sanitizer reports because the pools poison them.
#include <Lum/CString.h>

#include <gtest/gtest.h>

#include "Source/Base/MemoryTools.h"

namespace {

volatile unsigned short g_Sink;

TEST(PoolFaultsDeathTest, AreReported) {
    if (!Lum::Internal::kIsMemoryChecked) {
        GTEST_SKIP() << "only the address sanitizer reports these";
    }
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    // Where blocks lie at multiples of 4, the sanitizer cannot tell their last bytes apart.
    if (sizeof(void*) == 8) {
        EXPECT_DEATH(CString(u"abc").LockBuffer()[65] = 'x', "AddressSanitizer");
    }
    unsigned short* const units = CString(u"abc").LockBuffer();
    EXPECT_DEATH(units[1] = 'x', "AddressSanitizer") << "written after destruction";
    CFixedAlloc pool(160, 4);
    void* const block = pool.Alloc();
    EXPECT_DEATH(g_Sink = static_cast<unsigned short*>(block)[(160 + 40) / sizeof g_Sink], "AddressSanitizer");
    pool.Free(block);
    EXPECT_DEATH(pool.Free(block), "AddressSanitizer");
}

}  // namespace
