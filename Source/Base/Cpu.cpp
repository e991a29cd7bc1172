// The questions to the processor, and in debug builds to the environment.
#include "Source/Base/Cpu.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "Source/Base/Target.h"

namespace Lum::Internal {

constinit std::atomic<unsigned char> g_CpuAnswer{0};

namespace {

CpuTier Use(CpuTier tier) noexcept {
    g_CpuAnswer.store(static_cast<unsigned char>(static_cast<unsigned char>(tier) + 1), std::memory_order_relaxed);
    return tier;
}

#ifdef __SSE2__

CpuTier BestTier() noexcept {
    // Static initialisers may come here before the compiler's own has looked at the processor.
    __builtin_cpu_init();
    if (__builtin_cpu_supports("ssse3") == 0 || __builtin_cpu_supports("popcnt") == 0) {
        return CpuTier::kSse2;
    }
    if (__builtin_cpu_supports("sse4.1") == 0) {
        return CpuTier::kSsse3;
    }
    if (__builtin_cpu_supports("avx2") == 0 || __builtin_cpu_supports("bmi") == 0 ||
        __builtin_cpu_supports("bmi2") == 0) {
        return CpuTier::kSse41;
    }
    if (__builtin_cpu_supports("avx512f") == 0 || __builtin_cpu_supports("avx512bw") == 0 ||
        __builtin_cpu_supports("avx512vl") == 0 || __builtin_cpu_supports("avx512vbmi") == 0 ||
        __builtin_cpu_supports("avx512vbmi2") == 0) {
        return CpuTier::kAvx2;
    }
    return CpuTier::kAvx512;
}

#elif defined(LUM_HAS_NEON)

CpuTier BestTier() noexcept { return CpuTier::kNeon; }

#else

CpuTier BestTier() noexcept { return CpuTier::kPlain; }

#endif

#ifdef NDEBUG

CpuTier WantedTier() noexcept { return CpuTier::kAvx512; }

#else

CpuTier WantedTier() noexcept {
    constexpr std::string_view names[] = {"plain", "neon", "sse2", "ssse3", "sse4.1", "avx2", "avx512"};
    const char* const wanted = std::getenv("LUM_CPU");
    if (wanted == nullptr) {
        return CpuTier::kAvx512;
    }
    const auto* const name = std::find(std::begin(names), std::end(names), wanted);
    if (name == std::end(names)) {
        std::fprintf(stderr, "LUM_CPU=%s: not plain, neon, sse2, ssse3, sse4.1, avx2 or avx512\n", wanted);
        std::abort();
    }
    return static_cast<CpuTier>(name - std::begin(names));
}

#endif

}  // namespace

CpuTier AskCpu() noexcept { return Use(std::min(BestTier(), WantedTier())); }

CpuTier ForceCpu(CpuTier tier) noexcept { return Use(std::min(BestTier(), tier)); }

}  // namespace Lum::Internal
