// Faults in buffers that our own pools deal out, which the address sanitizer sees because it is told.
#include <Lum/CString.h>

#include <gtest/gtest.h>

#include "Source/Base/MemoryTools.h"

namespace {

volatile unsigned short g_Sink;

void WritePastTheRoom() {
    CString s(u"abc");
    s.LockBuffer()[65] = 'x';
}

void WriteAfterTheEnd() {
    auto* const s = new CString(u"abc");
    unsigned short* const units = s->LockBuffer();
    delete s;
    units[1] = 'x';
}

void ReadAnUnusedBlock() {
    CFixedAlloc pool(160, 4);
    auto* const block = static_cast<unsigned short*>(pool.Alloc());
    g_Sink = block[(160 + 40) / sizeof *block];
}

void FreeTwice() {
    CFixedAlloc pool(160, 4);
    void* const block = pool.Alloc();
    pool.Free(block);
    pool.Free(block);
}

TEST(PoolFaultsDeathTest, AreReported) {
    if (!Lum::kIsMemoryWatched) {
        GTEST_SKIP() << "without the address sanitizer nobody looks";
    }
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const struct {
        const char* name;
        void (*fault)();
        bool needsFineSlack;
    } rows[] = {{"write past the room", WritePastTheRoom, true},
                {"write after the string's end", WriteAfterTheEnd, false},
                {"read of an unused block", ReadAnUnusedBlock, false},
                {"a block given back twice", FreeTwice, false}};
    for (const auto& row : rows) {
        // Where blocks lie at multiples of 4, the sanitizer cannot tell their last bytes apart.
        if (!row.needsFineSlack || sizeof(void*) == 8) {
            EXPECT_DEATH(row.fault(), "AddressSanitizer") << row.name;
        }
    }
}

}  // namespace
