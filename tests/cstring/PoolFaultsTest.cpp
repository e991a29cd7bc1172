// Faults in buffers of our own pools, which the address sanitizer reports because the pools poison them.
#include <Lum/CString.h>

#include <gtest/gtest.h>

#include "Source/Base/MemoryTools.h"

namespace {

volatile unsigned short g_Sink;

void WritePastTheCapacity() { CString(u"abc").LockBuffer()[65] = 'x'; }

void WriteAfterDestruction() {
    unsigned short* const units = CString(u"abc").LockBuffer();
    units[1] = 'x';
}

void ReadAnUnusedBlock() {
    CFixedAlloc pool(160, 4);
    g_Sink = static_cast<unsigned short*>(pool.Alloc())[(160 + 40) / sizeof g_Sink];
}

void FreeTwice() {
    CFixedAlloc pool(160, 4);
    void* const block = pool.Alloc();
    pool.Free(block);
    pool.Free(block);
}

TEST(PoolFaultsDeathTest, AreReported) {
    if (!Lum::Internal::kIsMemoryChecked) {
        GTEST_SKIP() << "only the address sanitizer reports these";
    }
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    // Where blocks lie at multiples of 4, the sanitizer cannot tell their last bytes apart.
    if (sizeof(void*) == 8) {
        EXPECT_DEATH(WritePastTheCapacity(), "AddressSanitizer");
    }
    EXPECT_DEATH(WriteAfterDestruction(), "AddressSanitizer");
    EXPECT_DEATH(ReadAnUnusedBlock(), "AddressSanitizer");
    EXPECT_DEATH(FreeTwice(), "AddressSanitizer");
}

}  // namespace
