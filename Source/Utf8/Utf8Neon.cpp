// UTF-8 to and from UTF-16 with NEON, which every 64-bit ARM processor has.
#include "Source/Utf8/Utf8.h"

#ifdef LUM_HAS_NEON
#include <arm_neon.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Source/Base/Block16Neon.h"
#include "Source/Utf8/Utf8Plain.h"

namespace Lum::Internal::TextConversion::Neon {
namespace {

// Runs are not looked for: no character begins with this byte.
constexpr unsigned char kLeastOfRuns = 0xFF;
namespace Runs {
template <unsigned kLeast>
void Skim(Cursor& /*cursor*/) noexcept {}
}  // namespace Runs

using Vector = uint8x16_t;

uint16x8_t Units(Vector lanes) noexcept { return vreinterpretq_u16_u8(lanes); }
int16x8_t SignedUnits(Vector lanes) noexcept { return vreinterpretq_s16_u8(lanes); }
Vector Lanes(uint16x8_t units) noexcept { return vreinterpretq_u8_u16(units); }

Vector LoadVector(const unsigned char* from) noexcept { return vld1q_u8(from); }
void Store(unsigned char* to, Vector lanes) noexcept { vst1q_u8(to, lanes); }
unsigned char LastOf(Vector bytes) noexcept { return vgetq_lane_u8(bytes, 15); }
Vector Units16(unsigned value) noexcept { return Lanes(vdupq_n_u16(static_cast<std::uint16_t>(value))); }
Vector And(Vector a, Vector b) noexcept { return vandq_u8(a, b); }
Vector Or(Vector a, Vector b) noexcept { return vorrq_u8(a, b); }
Vector Without(Vector lanes, Vector dropped) noexcept { return vbicq_u8(lanes, dropped); }
Vector AddBytes(Vector a, Vector b) noexcept { return vaddq_u8(a, b); }
Vector AddUnits(Vector a, Vector b) noexcept { return Lanes(vaddq_u16(Units(a), Units(b))); }
Vector EqualUnits(Vector a, Vector b) noexcept { return Lanes(vceqq_u16(Units(a), Units(b))); }
template <unsigned kByte>
Vector EqualBytes(Vector bytes) noexcept {
    return vceqq_u8(bytes, vdupq_n_u8(kByte));
}
template <unsigned kByte>
Vector BytesAtLeast(Vector bytes) noexcept {
    return vcgeq_u8(bytes, vdupq_n_u8(kByte));
}
template <unsigned kBound>
Vector UnitsAtLeast(Vector units) noexcept {
    return Lanes(vcgeq_u16(Units(units), vdupq_n_u16(kBound)));
}
template <unsigned kBound>
Vector UnitsBelow(Vector units) noexcept {
    return Lanes(vcltq_u16(Units(units), vdupq_n_u16(kBound)));
}
template <int kBits>
Vector ShiftUp(Vector units) noexcept {
    return Lanes(vshlq_n_u16(Units(units), kBits));
}
template <int kBits>
Vector ShiftDown(Vector units) noexcept {
    return Lanes(vshrq_n_u16(Units(units), kBits));
}
Vector Choose(Vector lanes, Vector others, Vector isOther) noexcept {
    return vbslq_u8(vreinterpretq_u8_s8(vshrq_n_s8(vreinterpretq_s8_u8(isOther), 7)), others, lanes);
}
using Internal::Neon::Bits;
template <unsigned kBits>
bool HasNone(Vector units) noexcept {
    return vmaxvq_u16(Units(And(units, Units16(kBits)))) == 0;
}
Vector Shuffle(Vector bytes, Vector places) noexcept { return vqtbl1q_u8(bytes, places); }
template <int kCount>
Vector BytesBefore(Vector bytes, Vector before) noexcept {
    return vextq_u8(before, bytes, 16 - kCount);
}
Vector ZipLowBytes(Vector a, Vector b) noexcept { return vzip1q_u8(a, b); }
Vector ZipHighBytes(Vector a, Vector b) noexcept { return vzip2q_u8(a, b); }
Vector ZipLowUnits(Vector a, Vector b) noexcept { return Lanes(vzip1q_u16(Units(a), Units(b))); }
Vector ZipHighUnits(Vector a, Vector b) noexcept { return Lanes(vzip2q_u16(Units(a), Units(b))); }
Vector NarrowUnits(Vector low, Vector high) noexcept {
    return vreinterpretq_u8_s8(vqmovn_high_s16(vqmovn_s16(SignedUnits(low)), SignedUnits(high)));
}
template <unsigned kMask>
Vector JoinSixBits(Vector pairs) noexcept {
    const uint16x8_t low = vshlq_n_u16(Units(And(pairs, Units16(kMask & 0xFF))), 6);
    return Lanes(vsraq_n_u16(low, Units(And(pairs, Units16(kMask & 0xFF00))), 8));
}

#include "Source/Utf8/Utf8Shuffles.inc"

}  // namespace

#include "Source/Utf8/Utf8Blocks.inc"

}  // namespace Lum::Internal::TextConversion::Neon

#endif
