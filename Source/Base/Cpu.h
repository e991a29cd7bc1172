// Which vector instructions the library uses: asked of the processor once, for every module.
//
// A module that has a fast variant compares UsedCpu() with the tier that the variant needs. The plain
// variant is the definition of the result, needs nothing, and is always there.
#pragma once

#include <atomic>

namespace Lum::Internal {

/// Sets of instructions. 64-bit ARM has kPlain and kNeon; x86 has kPlain and those behind kNeon, each with all
/// that are before it; others have kPlain only.
enum class CpuTier : unsigned char {
    kPlain,
    kNeon,
    kSse2,
    kSsse3,  ///< And POPCNT.
    kSse41,
    kAvx2,    ///< And BMI1 and BMI2.
    kAvx512,  ///< F, BW, VL, VBMI and VBMI2.
};

/// Zero before the first question, so that static initialisers of other files may ask; then 1 + the tier.
extern constinit std::atomic<unsigned char> g_CpuAnswer;

/// Asks the processor and keeps the answer. A debug build that finds LUM_CPU in the environment (plain,
/// neon, sse2, ssse3, sse4.1, avx2 or avx512) uses no more than that tier; another value ends the program.
CpuTier AskCpu() noexcept;

/// The tier to use. From any thread at any time; after the first call it costs one load.
inline CpuTier UsedCpu() noexcept {
    const unsigned char answer = g_CpuAnswer.load(std::memory_order_relaxed);
    return answer != 0 ? static_cast<CpuTier>(answer - 1) : AskCpu();
}

/// For tests: uses `tier` from now on, or the best that there is where that is less. Returns what it uses.
CpuTier ForceCpu(CpuTier tier) noexcept;

}  // namespace Lum::Internal
