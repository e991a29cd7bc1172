// UTF-8 to and from UTF-16 with SSE4.1.
#include "Source/Utf8/Utf8.h"

#ifdef __SSE2__
#include <smmintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Source/Base/Target.h"
#include "Source/Utf8/Utf8Plain.h"
#include "Source/Utf8/Utf8Runs.h"

LUM_TARGET_BEGIN("ssse3,sse4.1,popcnt")

namespace Lum::Internal::TextConversion::Sse41 {
namespace {

constexpr unsigned char kLeastOfRuns = 0xE0;

using Vector = __m128i;

Vector LoadVector(const unsigned char* from) noexcept { return _mm_loadu_si128(reinterpret_cast<const Vector*>(from)); }
void Store(unsigned char* to, Vector lanes) noexcept { _mm_storeu_si128(reinterpret_cast<Vector*>(to), lanes); }
unsigned char LastOf(Vector bytes) noexcept { return static_cast<unsigned char>(_mm_extract_epi8(bytes, 15)); }
Vector Bytes8(unsigned value) noexcept { return _mm_set1_epi8(static_cast<char>(value)); }
Vector Units16(unsigned value) noexcept { return _mm_set1_epi16(static_cast<short>(value)); }
Vector And(Vector a, Vector b) noexcept { return _mm_and_si128(a, b); }
Vector Or(Vector a, Vector b) noexcept { return _mm_or_si128(a, b); }
Vector Without(Vector lanes, Vector dropped) noexcept { return _mm_andnot_si128(dropped, lanes); }
Vector AddBytes(Vector a, Vector b) noexcept { return _mm_add_epi8(a, b); }
Vector AddUnits(Vector a, Vector b) noexcept { return _mm_add_epi16(a, b); }
Vector EqualUnits(Vector a, Vector b) noexcept { return _mm_cmpeq_epi16(a, b); }
template <unsigned kByte>
Vector EqualBytes(Vector bytes) noexcept {
    return _mm_cmpeq_epi8(bytes, Bytes8(kByte));
}
template <unsigned kByte>
Vector BytesAtLeast(Vector bytes) noexcept {
    return _mm_cmpeq_epi8(_mm_max_epu8(bytes, Bytes8(kByte)), bytes);
}
template <unsigned kBound>
Vector UnitsAtLeast(Vector units) noexcept {
    return _mm_cmpeq_epi16(_mm_max_epu16(units, Units16(kBound)), units);
}
template <unsigned kBound>
Vector UnitsBelow(Vector units) noexcept {
    return _mm_cmpgt_epi16(Units16(kBound), units);
}
template <int kBits>
Vector ShiftUp(Vector units) noexcept {
    return _mm_slli_epi16(units, kBits);
}
template <int kBits>
Vector ShiftDown(Vector units) noexcept {
    return _mm_srli_epi16(units, kBits);
}
Vector Choose(Vector lanes, Vector others, Vector isOther) noexcept {
#if defined(__CHAR_UNSIGNED__) && !defined(__clang__)
    // g++ 12 takes the bytes of the choice for char, and with -funsigned-char none for negative.
    const Vector isNegative = _mm_cmpgt_epi8(_mm_setzero_si128(), isOther);
    return Or(And(isNegative, others), Without(lanes, isNegative));
#else
    return _mm_blendv_epi8(lanes, others, isOther);
#endif
}
std::uint32_t Bits(Vector lanes) noexcept { return static_cast<std::uint32_t>(_mm_movemask_epi8(lanes)); }
template <unsigned kBits>
bool HasNone(Vector units) noexcept {
    return _mm_testz_si128(units, Units16(kBits)) != 0;
}
Vector Shuffle(Vector bytes, Vector places) noexcept { return _mm_shuffle_epi8(bytes, places); }
template <int kCount>
Vector BytesBefore(Vector bytes, Vector before) noexcept {
    return _mm_alignr_epi8(bytes, before, 16 - kCount);
}
Vector ZipLowBytes(Vector a, Vector b) noexcept { return _mm_unpacklo_epi8(a, b); }
Vector ZipHighBytes(Vector a, Vector b) noexcept { return _mm_unpackhi_epi8(a, b); }
Vector ZipLowUnits(Vector a, Vector b) noexcept { return _mm_unpacklo_epi16(a, b); }
Vector ZipHighUnits(Vector a, Vector b) noexcept { return _mm_unpackhi_epi16(a, b); }
Vector NarrowUnits(Vector low, Vector high) noexcept { return _mm_packs_epi16(low, high); }
template <unsigned kMask>
Vector JoinSixBits(Vector pairs) noexcept {
    return _mm_maddubs_epi16(And(pairs, Units16(kMask)), Units16(0x0140));
}

#include "Source/Utf8/Utf8Shuffles.inc"

}  // namespace

#include "Source/Utf8/Utf8Blocks.inc"

}  // namespace Lum::Internal::TextConversion::Sse41

LUM_TARGET_END
#endif
