// Picks what converts between UTF-8 and UTF-16 on this processor. Every variant gives the same bytes, endings
// and positions as the plain one.
#pragma once

#include "Source/Base/Cpu.h"
#include "Source/Base/Target.h"
#include "Source/Utf8/Utf8Plain.h"

namespace Lum::Internal::TextConversion {

#ifdef __SSE2__
namespace Avx512 {
Progress Utf8ToUtf16(Input input, Output output) noexcept;
Progress Utf16ToUtf8(Input input, Output output) noexcept;
}  // namespace Avx512
namespace Sse41 {
Progress Utf8ToUtf16(Input input, Output output) noexcept;
Progress Utf16ToUtf8(Input input, Output output) noexcept;
}  // namespace Sse41
#endif
#ifdef LUM_HAS_NEON
namespace Neon {
Progress Utf8ToUtf16(Input input, Output output) noexcept;
Progress Utf16ToUtf8(Input input, Output output) noexcept;
}  // namespace Neon
#endif

struct Utf8Functions {
    ConvertFunction toUtf16;
    ConvertFunction fromUtf16;
};

inline Utf8Functions FastestUtf8() noexcept {
#ifdef __SSE2__
    if (UsedCpu() >= CpuTier::kAvx512) {
        return {Avx512::Utf8ToUtf16, Avx512::Utf16ToUtf8};
    }
    if (UsedCpu() >= CpuTier::kSse41) {
        return {Sse41::Utf8ToUtf16, Sse41::Utf16ToUtf8};
    }
#endif
#ifdef LUM_HAS_NEON
    if (UsedCpu() >= CpuTier::kNeon) {
        return {Neon::Utf8ToUtf16, Neon::Utf16ToUtf8};
    }
#endif
    return {Plain::Utf8ToUtf16, Plain::Utf16ToUtf8};
}

}  // namespace Lum::Internal::TextConversion
