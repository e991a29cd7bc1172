// UTF-8 to and from UTF-16 with SSE4.1: what is not the end of a character is dropped by shuffles from tables.
//
// The method is Lemire's and Muła's ("Transcoding billions of Unicode characters per second with SIMD
// instructions", 2022), applied to eight units at a time.
#include "Platform/TextEncoding/Utf8.h"

#ifdef __SSE2__
#include <smmintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Platform/TextEncoding/Utf8Plain.h"
#include "Platform/TextEncoding/Utf8Runs.h"
#include "Source/Base/Target.h"

LUM_TARGET_BEGIN("ssse3,sse4.1,popcnt")

namespace Lum::Internal::TextConversion::Sse41 {
namespace {

/// 64 bytes, or 32 units.
struct Block {
    __m128i part[4];
};

constexpr std::size_t kOverhang = 16;
constexpr unsigned char kLeastOfRuns = 0xE0;

__m128i LoadPart(const unsigned char* from) noexcept { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); }
void Store(unsigned char* to, __m128i lanes) noexcept { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), lanes); }

Block Load(const unsigned char* from) noexcept {
    return {{LoadPart(from), LoadPart(from + 16), LoadPart(from + 32), LoadPart(from + 48)}};
}
Block LoadShort(const unsigned char* from, std::size_t size) noexcept {
    alignas(16) unsigned char bytes[64] = {};
    if (size != 0) {
        std::memcpy(bytes, from, size);
    }
    return Load(bytes);
}
unsigned char LastByte(const Block& block) noexcept {
    return static_cast<unsigned char>(_mm_extract_epi8(block.part[3], 15));
}

__m128i Bytes8(unsigned value) noexcept { return _mm_set1_epi8(static_cast<char>(value)); }
__m128i Units16(unsigned value) noexcept { return _mm_set1_epi16(static_cast<short>(value)); }
__m128i Or(__m128i a, __m128i b) noexcept { return _mm_or_si128(a, b); }
/// Lane by lane, (units & mask) shifted up, or down where `up` is negative.
template <unsigned kMask, int kUp>
__m128i UnitField(__m128i units) noexcept {
    const __m128i field = _mm_and_si128(units, Units16(kMask));
    if constexpr (kUp < 0) {
        return _mm_srli_epi16(field, -kUp);
    } else {
        return _mm_slli_epi16(field, kUp);
    }
}
__m128i UnitsAtLeast(__m128i units, unsigned bound) noexcept {
    return _mm_cmpeq_epi16(_mm_max_epu16(units, Units16(bound)), units);
}

std::uint32_t Bits(__m128i lanes) noexcept { return static_cast<std::uint32_t>(_mm_movemask_epi8(lanes)); }
/// A bit for each byte of four parts.
template <class LanesOf>
std::uint64_t BlockBits(const Block& block, LanesOf lanesOf) noexcept {
    const std::uint64_t low = Bits(lanesOf(block.part[0])) | Bits(lanesOf(block.part[1])) << 16;
    const std::uint64_t high = Bits(lanesOf(block.part[2])) | Bits(lanesOf(block.part[3])) << 16;
    return low | high << 32;
}

std::uint64_t HighBits(const Block& block) noexcept {
    return BlockBits(block, [](__m128i part) { return part; });
}
template <unsigned kByte>
std::uint64_t AtLeast(const Block& block) noexcept {
    return BlockBits(block, [](__m128i part) { return _mm_cmpeq_epi8(_mm_max_epu8(part, Bytes8(kByte)), part); });
}
template <unsigned kByte>
std::uint64_t Equal(const Block& block) noexcept {
    return BlockBits(block, [](__m128i part) { return _mm_cmpeq_epi8(part, Bytes8(kByte)); });
}

// ---- Tables of shuffles -------------------------------------------------------------------------

/// For each pattern of eight bits, which of sixteen bytes stay, in their order.
struct Shuffles {
    alignas(16) std::array<std::array<unsigned char, 16>, 256> rows{};

    /// Of each lane of `kLaneSize` bytes, the first `kept(pattern, lane)` stay.
    template <class Kept>
    constexpr Shuffles(unsigned laneSize, Kept kept) {
        for (unsigned pattern = 0; pattern < 256; ++pattern) {
            std::size_t size = 0;
            for (unsigned lane = 0; lane < 16 / laneSize; ++lane) {
                for (unsigned i = 0; i < kept(pattern, lane); ++i) {
                    rows[pattern][size++] = static_cast<unsigned char>(laneSize * lane + i);
                }
            }
            while (size < 16) {
                rows[pattern][size++] = 0x80;
            }
        }
    }
    [[nodiscard]] __m128i operator()(__m128i bytes, std::uint32_t pattern) const noexcept {
        return _mm_shuffle_epi8(bytes, _mm_load_si128(reinterpret_cast<const __m128i*>(rows[pattern].data())));
    }
};

/// Of eight units those whose bits are set.
constexpr Shuffles kKeepUnits(2, [](unsigned pattern, unsigned lane) { return pattern >> lane & 1U ? 2U : 0U; });
/// Of eight units, in characters of one byte where the bit is set, of two elsewhere.
constexpr Shuffles kOneOrTwo(2, [](unsigned pattern, unsigned lane) { return pattern >> lane & 1U ? 1U : 2U; });
/// Of four words, in characters of one byte to three: a bit for more than one byte, and a bit for three.
constexpr Shuffles kOneToThree(4, [](unsigned pattern, unsigned lane) {
    return 1 + (pattern >> 2 * lane & 1U) + (pattern >> (2 * lane + 1) & 1U);
});

// ---- UTF-8 to UTF-16 ----------------------------------------------------------------------------

void PutAscii(const Block& block, unsigned char* to) noexcept {
    for (const __m128i part : block.part) {
        Store(to, _mm_unpacklo_epi8(part, _mm_setzero_si128()));
        Store(to + 16, _mm_unpackhi_epi8(part, _mm_setzero_si128()));
        to += 32;
    }
}

/// Writes those of sixteen units whose bits are set.
void PutKept(unsigned char*& to, __m128i low, __m128i high, std::uint64_t kept) noexcept {
    const auto lowKept = static_cast<std::uint32_t>(kept & 0xFF);
    const auto highKept = static_cast<std::uint32_t>(kept >> 8 & 0xFF);
    Store(to, kKeepUnits(low, lowKept));
    to += 2 * std::popcount(lowKept);
    Store(to, kKeepUnits(high, highKept));
    to += 2 * std::popcount(highKept);
}

// In the following, a lane of `pair` holds a byte above the byte in front of it, a lane of `firstPair` the
// same one byte earlier.

__m128i TwoByteUnits(__m128i pair) noexcept {
    return _mm_maddubs_epi16(_mm_and_si128(pair, Units16(0x3F1F)), Units16(0x0140));
}

/// `isHigh` and `isLead` are set in all of a lane, by their highest bits, where the byte is not ASCII, and
/// where the byte in front of it begins a character of two.
__m128i UnitsUpToThree(__m128i pair, __m128i firstPair, __m128i isHigh, __m128i isLead) noexcept {
    const __m128i low = _mm_maddubs_epi16(_mm_and_si128(pair, Units16(0x3F3F)), Units16(0x0140));
    const __m128i three = Or(low, _mm_slli_epi16(firstPair, 12));
    const __m128i more = _mm_blendv_epi8(three, TwoByteUnits(pair), isLead);
    return _mm_blendv_epi8(_mm_srli_epi16(pair, 8), more, isHigh);
}

void PutUpToTwo(const Block& block, const Block& before, std::uint64_t ends, unsigned char*& to) noexcept {
    __m128i last = before.part[3];
    for (const __m128i part : block.part) {
        const __m128i behind = _mm_alignr_epi8(part, last, 15);
        const auto units = [](__m128i pair, __m128i twice) {
            return _mm_blendv_epi8(_mm_srli_epi16(pair, 8), TwoByteUnits(pair), twice);
        };
        PutKept(to, units(_mm_unpacklo_epi8(behind, part), _mm_unpacklo_epi8(part, part)),
                units(_mm_unpackhi_epi8(behind, part), _mm_unpackhi_epi8(part, part)), ends);
        ends >>= 16;
        last = part;
    }
}

/// All ones in the lanes whose bits are set.
__m128i Spread(std::uint64_t bits) noexcept {
    const __m128i lanes = _mm_setr_epi16(1, 2, 4, 8, 16, 32, 64, 128);
    return _mm_cmpeq_epi16(_mm_and_si128(Units16(static_cast<unsigned>(bits & 0xFF)), lanes), lanes);
}
/// The first half of the pair of a character of four bytes, by its third byte.
__m128i LeadUnits(__m128i pair, __m128i firstPair) noexcept {
    const __m128i high = Or(UnitField<0x0007, 8>(firstPair), UnitField<0x3F00, -6>(firstPair));
    return _mm_add_epi16(Or(high, UnitField<0x3000, -12>(pair)), Units16(0xD800 - (0x10000 >> 10)));
}
/// The second half, by its fourth byte.
__m128i TrailUnits(__m128i pair) noexcept {
    return Or(_mm_maddubs_epi16(_mm_and_si128(pair, Units16(0x3F0F)), Units16(0x0140)), Units16(0xDC00));
}

template <bool kHasFour>
void PutMixed(const Block& block, const Block& before, std::uint64_t ends, std::uint64_t thirds, std::uint64_t fourths,
              unsigned char*& to) noexcept {
    __m128i last = before.part[3];
    for (const __m128i part : block.part) {
        const __m128i behind1 = _mm_alignr_epi8(part, last, 15);
        const __m128i behind2 = _mm_alignr_epi8(part, last, 14);
        const __m128i lowPair = _mm_unpacklo_epi8(behind1, part);
        const __m128i highPair = _mm_unpackhi_epi8(behind1, part);
        const __m128i lowFirst = _mm_unpacklo_epi8(behind2, behind1);
        const __m128i highFirst = _mm_unpackhi_epi8(behind2, behind1);
        // Of a byte that is not ASCII, bit 6 says that it begins a character.
        const __m128i isLead = _mm_add_epi8(behind1, behind1);
        __m128i low =
            UnitsUpToThree(lowPair, lowFirst, _mm_unpacklo_epi8(part, part), _mm_unpacklo_epi8(isLead, isLead));
        __m128i high =
            UnitsUpToThree(highPair, highFirst, _mm_unpackhi_epi8(part, part), _mm_unpackhi_epi8(isLead, isLead));
        if constexpr (kHasFour) {
            low = _mm_blendv_epi8(low, LeadUnits(lowPair, lowFirst), Spread(thirds));
            low = _mm_blendv_epi8(low, TrailUnits(lowPair), Spread(fourths));
            high = _mm_blendv_epi8(high, LeadUnits(highPair, highFirst), Spread(thirds >> 8));
            high = _mm_blendv_epi8(high, TrailUnits(highPair), Spread(fourths >> 8));
        }
        PutKept(to, low, high, ends);
        ends >>= 16;
        thirds >>= 16;
        fourths >>= 16;
        last = part;
    }
}

/// Sixteen bytes of nothing but characters of three, the first of which ends at byte `kEnd`: five or six units.
template <int kEnd>
void PutThrees(__m128i part, __m128i last, unsigned char*& to) noexcept {
    // Seen from two bytes earlier, all of the characters but perhaps the last are in one vector.
    const __m128i earlier = _mm_alignr_epi8(part, last, 14);
    constexpr auto place = [](int unit, int back) {
        const int end = kEnd + 3 * unit;
        return static_cast<char>(end > 15 || end + 2 - back > 15 ? -1 : end + 2 - back);
    };
    constexpr auto endPlace = [](int unit) { return static_cast<char>(kEnd + 3 * unit > 15 ? -1 : kEnd + 3 * unit); };
    const __m128i firstTwo = _mm_shuffle_epi8(
        earlier, _mm_setr_epi8(place(0, 1), place(0, 2), place(1, 1), place(1, 2), place(2, 1), place(2, 2),
                               place(3, 1), place(3, 2), place(4, 1), place(4, 2), -1, -1, -1, -1, -1, -1));
    __m128i head = firstTwo;
    if constexpr (kEnd == 0) {
        // The sixth ends at the last byte.
        head = Or(head, _mm_shuffle_epi8(
                            part, _mm_setr_epi8(-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 14, 13, -1, -1, -1, -1)));
    }
    const __m128i third =
        _mm_shuffle_epi8(part, _mm_setr_epi8(endPlace(0), -1, endPlace(1), -1, endPlace(2), -1, endPlace(3), -1,
                                             endPlace(4), -1, endPlace(5), -1, -1, -1, -1, -1));
    Store(to, Or(Or(UnitField<0x0F00, 4>(head), UnitField<0x003F, 6>(head)), UnitField<0x003F, 0>(third)));
    to += 2 * ((15 - kEnd) / 3 + 1);
}

/// A block of nothing but characters of three bytes; the parts' own beginnings turn in a circle of three.
template <int kEnd>
void PutBlockOfThrees(const Block& block, __m128i last, unsigned char*& to) noexcept {
    PutThrees<kEnd>(block.part[0], last, to);
    PutThrees<(kEnd + 2) % 3>(block.part[1], block.part[0], to);
    PutThrees<(kEnd + 1) % 3>(block.part[2], block.part[1], to);
    PutThrees<kEnd>(block.part[3], block.part[2], to);
}

void PutUpToThree(const Block& block, const Block& before, std::uint64_t ends, bool isAllThree,
                  unsigned char*& to) noexcept {
    // Short blocks are not worth it: they end anywhere.
    if (!isAllThree || std::popcount(ends) < 21) {
        PutMixed<false>(block, before, ends, 0, 0, to);
    } else if ((ends & 1) != 0) {
        PutBlockOfThrees<0>(block, before.part[3], to);
    } else if ((ends & 2) != 0) {
        PutBlockOfThrees<1>(block, before.part[3], to);
    } else {
        PutBlockOfThrees<2>(block, before.part[3], to);
    }
}

void PutUpToFour(const Block& block, const Block& before, std::uint64_t ends, std::uint64_t thirds,
                 std::uint64_t fourths, unsigned char*& to) noexcept {
    PutMixed<true>(block, before, ends, thirds, fourths, to);
}

// ---- UTF-16 to UTF-8 ----------------------------------------------------------------------------

bool HasNone(__m128i units, unsigned bits) noexcept { return _mm_testz_si128(units, Units16(bits)) != 0; }

/// The two bytes of a character, the first two of three, and the third.
__m128i TwoBytes(__m128i units) noexcept {
    return Or(Or(_mm_srli_epi16(units, 6), UnitField<0x3F, 8>(units)), Units16(0x80C0));
}
__m128i FirstTwoOfThree(__m128i units) noexcept {
    return Or(Or(_mm_srli_epi16(units, 12), UnitField<0x0FC0, 2>(units)), Units16(0x80E0));
}
__m128i ThirdOfThree(__m128i units) noexcept { return Or(UnitField<0x3F, 0>(units), Units16(0x80)); }

/// Writes eight characters of one byte to three, whose first two bytes are in `head`.
void PutUpToThreeBytes(__m128i head, __m128i units, __m128i isMore, __m128i isThree, unsigned char*& to) noexcept {
    const __m128i third = ThirdOfThree(units);
    const std::uint32_t pattern = Bits(_mm_blendv_epi8(isMore, isThree, Units16(0xFF00)));
    Store(to, kOneToThree(_mm_unpacklo_epi16(head, third), pattern & 0xFF));
    to += 4 + std::popcount(pattern & 0xFF);
    Store(to, kOneToThree(_mm_unpackhi_epi16(head, third), pattern >> 8));
    to += 4 + std::popcount(pattern >> 8);
}

void PutThreeBytes(__m128i units, unsigned char*& to) noexcept {
    const __m128i close = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
    const __m128i head = FirstTwoOfThree(units);
    const __m128i third = ThirdOfThree(units);
    Store(to, _mm_shuffle_epi8(_mm_unpacklo_epi16(head, third), close));
    Store(to + 12, _mm_shuffle_epi8(_mm_unpackhi_epi16(head, third), close));
    to += 24;
}

/// The first two bytes, or all, of characters of one byte to three.
__m128i HeadBytes(__m128i units, __m128i isMore, __m128i isThree) noexcept {
    return _mm_blendv_epi8(_mm_blendv_epi8(units, TwoBytes(units), isMore), FirstTwoOfThree(units), isThree);
}

std::size_t ConvertWithPairs(const Block& block, const Block& isPair, unsigned char*& to) noexcept {
    Block isTrail;
    for (int i = 0; i < 4; ++i) {
        isTrail.part[i] = _mm_cmpeq_epi16(UnitField<0xFC00, 0>(block.part[i]), Units16(0xDC00));
    }
    const auto unitBits = [](const Block& lanes) {
        return Bits(_mm_packs_epi16(lanes.part[0], lanes.part[1])) | Bits(_mm_packs_epi16(lanes.part[2], lanes.part[3]))
                                                                         << 16;
    };
    const std::uint32_t trails = unitBits(isTrail);
    const std::uint32_t leads = unitBits(isPair) & ~trails;
    if (leads << 1 != trails) {
        return 0;
    }
    __m128i last = _mm_setzero_si128();
    for (int i = 0; i < 4; ++i) {
        const __m128i units = block.part[i];
        const __m128i behind = _mm_alignr_epi8(units, last, 14);
        last = units;
        // Each half of a pair makes two of the four bytes. 40 hex is 10000 without its ten low bits.
        const __m128i high = _mm_add_epi16(UnitField<0x3FF, 0>(units), Units16(0x40));
        const __m128i first = Or(Or(_mm_srli_epi16(high, 8), UnitField<0xFC, 6>(high)), Units16(0x80F0));
        const __m128i third = Or(UnitField<0x3C0, -6>(units), UnitField<0x3, 4>(behind));
        const __m128i second = Or(Or(third, UnitField<0x3F, 8>(units)), Units16(0x8080));
        const __m128i pair = _mm_blendv_epi8(first, second, isTrail.part[i]);
        if (Bits(isPair.part[i]) == 0xFFFF) {
            Store(to, pair);
            to += 16;
            continue;
        }
        const __m128i isMore = UnitsAtLeast(units, 0x80);
        const __m128i isThree = _mm_andnot_si128(isPair.part[i], UnitsAtLeast(units, 0x800));
        const __m128i head = _mm_blendv_epi8(HeadBytes(units, isMore, isThree), pair, isPair.part[i]);
        PutUpToThreeBytes(head, units, isMore, isThree, to);
    }
    if (leads >> 31 != 0) {
        // The pair's other half is in the next block, which begins with it.
        to -= 2;
        return 62;
    }
    return 64;
}

__m128i AnyOf(const Block& block) noexcept {
    return Or(Or(block.part[0], block.part[1]), Or(block.part[2], block.part[3]));
}

bool PutAsciiUnits(const Block& block, unsigned char* to) noexcept {
    Store(to, _mm_packus_epi16(block.part[0], block.part[1]));
    Store(to + 16, _mm_packus_epi16(block.part[2], block.part[3]));
    return HasNone(AnyOf(block), 0xFF80);
}

std::size_t ConvertUnits(const Block& block, unsigned char*& to) noexcept {
    if (HasNone(AnyOf(block), 0xF800)) {
        for (const __m128i units : block.part) {
            const __m128i isAscii = _mm_cmpgt_epi16(Units16(0x80), units);
            const std::uint32_t pattern = Bits(_mm_packs_epi16(isAscii, _mm_setzero_si128()));
            Store(to, kOneOrTwo(_mm_blendv_epi8(TwoBytes(units), units, isAscii), pattern));
            to += 16 - std::popcount(pattern);
        }
        return 64;
    }
    Block isPair;
    for (int i = 0; i < 4; ++i) {
        isPair.part[i] = _mm_cmpeq_epi16(UnitField<0xF800, 0>(block.part[i]), Units16(0xD800));
    }
    if (!HasNone(AnyOf(isPair), 0xFFFF)) {
        return ConvertWithPairs(block, isPair, to);
    }
    for (const __m128i units : block.part) {
        const __m128i isThree = UnitsAtLeast(units, 0x800);
        if (Bits(isThree) == 0xFFFF) {
            PutThreeBytes(units, to);
        } else {
            const __m128i isMore = UnitsAtLeast(units, 0x80);
            PutUpToThreeBytes(HeadBytes(units, isMore, isThree), units, isMore, isThree, to);
        }
    }
    return 64;
}

}  // namespace

#include "Platform/TextEncoding/Utf8Blocks.inc"

}  // namespace Lum::Internal::TextConversion::Sse41

LUM_TARGET_END
#endif
