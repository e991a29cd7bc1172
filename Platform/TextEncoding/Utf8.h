// Picks what converts UTF-8 on this processor.
#pragma once

#include "Platform/TextEncoding/Utf8Plain.h"

namespace TextConversion {

struct Utf8Functions {
    ConvertFunction toUtf16;
    ConvertFunction fromUtf16;
};

}  // namespace TextConversion

#ifdef __SSE2__
#include "Platform/TextEncoding/Utf8Ssse3.h"
namespace TextConversion {
inline Utf8Functions FastestUtf8() noexcept {
    return Ssse3::IsSupported() ? Utf8Functions{Ssse3::Utf8ToUtf16, Ssse3::Utf16ToUtf8}
                                : Utf8Functions{Plain::Utf8ToUtf16, Plain::Utf16ToUtf8};
}
}  // namespace TextConversion
#else
namespace TextConversion {
inline Utf8Functions FastestUtf8() noexcept { return {Plain::Utf8ToUtf16, Plain::Utf16ToUtf8}; }
}  // namespace TextConversion
#endif
