// Sixteen bytes with NEON, which every 64-bit ARM processor has.
#pragma once

#include <arm_neon.h>
#include <array>
#include <cstddef>
#include <cstdint>

#include "Source/Base/Block16Plain.h"

namespace Lum::Internal::Neon {

/// The highest bit of each byte, as SSE2 has an instruction for.
inline std::uint32_t Bits(uint8x16_t lanes) noexcept {
    alignas(16) static constexpr std::int8_t kPlaces[16] = {0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3, 4, 5, 6, 7};
    const uint8x16_t bits = vshlq_u8(vshrq_n_u8(lanes, 7), vld1q_s8(kPlaces));
    return vaddv_u8(vget_low_u8(bits)) | static_cast<std::uint32_t>(vaddv_u8(vget_high_u8(bits))) << 8;
}

/// Answers as Plain::Block16 does.
class Block16 {
public:
    static Block16 Load(const char* from) noexcept {
        return Block16(vld1q_u8(reinterpret_cast<const unsigned char*>(from)));
    }
    static Block16 LoadShort(const char* from, std::size_t size) noexcept {
        const auto [low, high] = ShortWords(from, size);
        return Block16(vcombine_u8(vcreate_u8(low), vcreate_u8(high)));
    }
    void Store(char* to) const noexcept { vst1q_u8(reinterpret_cast<unsigned char*>(to), m_Bytes); }

    [[nodiscard]] std::uint32_t Equals(char c) const noexcept { return Bits(Same(m_Bytes, c)); }
    template <char... Wanted>
    [[nodiscard]] std::uint32_t EqualsAny() const noexcept {
        uint8x16_t lanes = vdupq_n_u8(0);
        ((lanes = vorrq_u8(lanes, Same(m_Bytes, Wanted))), ...);
        return Bits(lanes);
    }
    [[nodiscard]] std::uint32_t InRange(unsigned char low, unsigned char high) const noexcept {
        return Bits(Within(m_Bytes, low, high));
    }
    template <std::size_t N>
    [[nodiscard]] std::uint32_t InAnyRange(const ByteRanges<N>& ranges) const noexcept {
        uint8x16_t lanes = vdupq_n_u8(0);
        for (std::size_t i = 0; i < N; ++i) {
            const uint8x16_t shifted = vsubq_u8(m_Bytes, vld1q_u8(ranges.low[i].data()));
            lanes = vorrq_u8(lanes, vcleq_u8(shifted, vld1q_u8(ranges.width[i].data())));
        }
        return Bits(lanes);
    }
    [[nodiscard]] std::uint32_t Letters() const noexcept {
        return Bits(Within(vorrq_u8(m_Bytes, vdupq_n_u8(0x20)), 'a', 'z'));
    }

private:
    explicit Block16(uint8x16_t bytes) noexcept : m_Bytes(bytes) {}

    static uint8x16_t Same(uint8x16_t bytes, char c) noexcept {
        return vceqq_u8(bytes, vdupq_n_u8(static_cast<unsigned char>(c)));
    }
    /// Shifted down by `low`, the range is [0, high - low].
    static uint8x16_t Within(uint8x16_t bytes, unsigned char low, unsigned char high) noexcept {
        const uint8x16_t shifted = vsubq_u8(bytes, vdupq_n_u8(low));
        return vcleq_u8(shifted, vdupq_n_u8(static_cast<unsigned char>(high - low)));
    }

    uint8x16_t m_Bytes;
};

}  // namespace Lum::Internal::Neon
