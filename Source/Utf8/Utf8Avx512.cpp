// UTF-8 to and from UTF-16 with AVX-512 (VBMI2): what is not the end of a character is compressed away.
//
// The method is Lemire's and Muła's ("Transcoding Unicode characters with AVX-512 instructions", 2023).
#include "Source/Utf8/Utf8.h"

#ifdef __SSE2__
#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Source/Base/Target.h"
#include "Source/Utf8/Utf8Plain.h"
#include "Source/Utf8/Utf8Runs.h"

#ifndef __clang__
// g++ 12 warns of its own header: intrinsics start from a variable that they leave unset.
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

LUM_TARGET_BEGIN("avx512f,avx512bw,avx512vl,avx512vbmi,avx512vbmi2,bmi,bmi2,popcnt")

namespace Lum::Internal::TextConversion::Avx512 {
namespace {

using Block = __m512i;

constexpr std::size_t kOverhang = 64;
constexpr unsigned char kLeastOfRuns = 0xF0;

Block Load(const unsigned char* from) noexcept { return _mm512_loadu_si512(from); }
Block LoadShort(const unsigned char* from, std::size_t size) noexcept {
    return _mm512_maskz_loadu_epi8((std::uint64_t{1} << size) - 1, from);
}
unsigned char LastByte(Block block) noexcept {
    return static_cast<unsigned char>(_mm_extract_epi8(_mm512_extracti32x4_epi32(block, 3), 15));
}
void Store(unsigned char* to, __m512i lanes) noexcept { _mm512_storeu_si512(to, lanes); }

__m512i Bytes8(unsigned value) noexcept { return _mm512_set1_epi8(static_cast<char>(value)); }
__m512i Units16(unsigned value) noexcept { return _mm512_set1_epi16(static_cast<short>(value)); }
__m512i Words32(unsigned value) noexcept { return _mm512_set1_epi32(static_cast<int>(value)); }
/// Lane by lane, (lanes & mask) shifted up, or down where `up` is negative.
template <unsigned kMask, int kUp>
__m512i UnitField(__m512i lanes) noexcept {
    const __m512i field = _mm512_and_si512(lanes, Units16(kMask));
    if constexpr (kUp < 0) {
        return _mm512_srli_epi16(field, static_cast<unsigned>(-kUp));
    } else {
        return _mm512_slli_epi16(field, static_cast<unsigned>(kUp));
    }
}
template <unsigned kMask, int kUp>
__m512i WordField(__m512i lanes) noexcept {
    const __m512i field = _mm512_and_si512(lanes, Words32(kMask));
    if constexpr (kUp < 0) {
        return _mm512_srli_epi32(field, static_cast<unsigned>(-kUp));
    } else {
        return _mm512_slli_epi32(field, static_cast<unsigned>(kUp));
    }
}
__m512i Or(__m512i a, __m512i b) noexcept { return _mm512_or_si512(a, b); }
__m512i Or(__m512i a, __m512i b, __m512i c) noexcept { return _mm512_ternarylogic_epi32(a, b, c, 0xFE); }

std::uint64_t HighBits(Block block) noexcept { return _mm512_movepi8_mask(block); }
template <unsigned kByte>
std::uint64_t AtLeast(Block block) noexcept {
    return _mm512_cmpge_epu8_mask(block, Bytes8(kByte));
}
template <unsigned kByte>
std::uint64_t Equal(Block block) noexcept {
    return _mm512_cmpeq_epi8_mask(block, Bytes8(kByte));
}

/// The first or the second half of a block.
template <int kHalf>
__m256i HalfOf(__m512i block) noexcept {
    return _mm512_extracti64x4_epi64(block, kHalf);
}

// ---- UTF-8 to UTF-16 ----------------------------------------------------------------------------

/// The block's bytes 32 * kHalf to 32 * kHalf + 31, one a unit.
template <int kHalf>
__m512i Widened(__m512i block) noexcept {
    return _mm512_cvtepu8_epi16(HalfOf<kHalf>(block));
}

void PutAscii(Block block, unsigned char* to) noexcept {
    Store(to, Widened<0>(block));
    Store(to + 64, Widened<1>(block));
}

/// Places in two blocks: below 64 in the block, from 64 on in the one before it.
using Places = std::array<unsigned char, 64>;

/// The place `back` bytes before each.
constexpr Places PlacesBehind(int back) {
    Places places{};
    for (int i = 0; i < 64; ++i) {
        places[static_cast<std::size_t>(i)] = static_cast<unsigned char>(i < back ? 128 + i - back : i - back);
    }
    return places;
}
template <int kBack>
alignas(64) constexpr Places kBehind = PlacesBehind(kBack);

__m512i At(const Places& places, Block block, Block before) noexcept {
    return _mm512_permutex2var_epi8(block, _mm512_load_si512(places.data()), before);
}

/// Writes the units whose bits are set.
void PutKept(unsigned char*& to, __m512i units, std::uint64_t kept) noexcept {
    const auto mask = static_cast<__mmask32>(kept);
    Store(to, _mm512_maskz_compress_epi16(mask, units));
    to += 2 * std::popcount(mask);
}

/// The units of characters of two bytes: the last five bits of the first byte and six of the second.
__m512i TwoByteUnits(__m512i first, __m512i second) noexcept {
    return Or(UnitField<0x1F, 6>(first), UnitField<0x3F, 0>(second));
}

template <int kHalf>
void PutHalfUpToTwo(Block block, __m512i behind, std::uint64_t ends, unsigned char*& to) noexcept {
    const __m512i byte = Widened<kHalf>(block);
    const __mmask32 isTwo = _mm512_cmpge_epu16_mask(byte, Units16(0x80));
    PutKept(to, _mm512_mask_mov_epi16(byte, isTwo, TwoByteUnits(Widened<kHalf>(behind), byte)), ends >> 32 * kHalf);
}

void PutUpToTwo(Block block, Block before, std::uint64_t ends, unsigned char*& to) noexcept {
    const __m512i behind = At(kBehind<1>, block, before);
    PutHalfUpToTwo<0>(block, behind, ends, to);
    PutHalfUpToTwo<1>(block, behind, ends, to);
}

/// A byte and the two in front of it, one a unit, of one half of a block.
struct Triple {
    __m512i first;
    __m512i second;
    __m512i third;
};

/// The units of characters of at most three bytes, by their last ones.
__m512i UnitsUpToThree(const Triple& bytes) noexcept {
    const __m512i low = Or(UnitField<0x3F, 6>(bytes.second), UnitField<0x3F, 0>(bytes.third));
    const __m512i three = Or(_mm512_slli_epi16(bytes.first, 12), low);
    const __mmask32 isTwo = _mm512_cmpge_epu16_mask(bytes.second, Units16(0xC0));
    const __mmask32 isAscii = _mm512_cmplt_epu16_mask(bytes.third, Units16(0x80));
    const __m512i units = _mm512_mask_mov_epi16(three, isTwo, TwoByteUnits(bytes.second, bytes.third));
    return _mm512_mask_mov_epi16(units, isAscii, bytes.third);
}

template <int kHalf>
Triple TripleOf(Block block, __m512i behind1, __m512i behind2) noexcept {
    return {Widened<kHalf>(behind2), Widened<kHalf>(behind1), Widened<kHalf>(block)};
}

/// Where the bytes are of the characters in a block of nothing but characters of three bytes, the first of
/// which ends at byte `end`: for each unit, the second byte and the third, and the first twice.
struct ThreesPlaces {
    Places tail{};
    Places head{};

    constexpr explicit ThreesPlaces(int end) {
        for (int i = 0; i < 32; ++i) {
            const int last = end + 3 * i > 63 ? 2 : end + 3 * i;
            const auto place = [](int at) { return static_cast<unsigned char>(at < 0 ? 128 + at : at); };
            const auto unit = 2 * static_cast<std::size_t>(i);
            tail[unit] = place(last - 1);
            tail[unit + 1] = place(last);
            head[unit] = head[unit + 1] = place(last - 2);
        }
    }
};
alignas(64) constexpr ThreesPlaces kThrees[3] = {ThreesPlaces(0), ThreesPlaces(1), ThreesPlaces(2)};

void PutUpToThree(Block block, Block before, std::uint64_t ends, bool isAllThree, unsigned char*& to) noexcept {
    // Short blocks are not worth it: they end anywhere.
    if (isAllThree && std::popcount(ends) >= 21) {
        const ThreesPlaces& places = kThrees[std::countr_zero(ends)];
        const __m512i tail = _mm512_and_si512(At(places.tail, block, before), Units16(0x3F3F));
        const __m512i low = _mm512_maddubs_epi16(tail, Units16(0x0140));
        Store(to, Or(low, _mm512_slli_epi16(At(places.head, block, before), 12)));
        to += 2 * std::popcount(ends);
        return;
    }
    const __m512i behind1 = At(kBehind<1>, block, before);
    const __m512i behind2 = At(kBehind<2>, block, before);
    PutKept(to, UnitsUpToThree(TripleOf<0>(block, behind1, behind2)), ends);
    PutKept(to, UnitsUpToThree(TripleOf<1>(block, behind1, behind2)), ends >> 32);
}

/// Of characters of four bytes, the first halves of the pairs by the third bytes, the others by the fourths.
__m512i UnitsUpToFour(const Triple& bytes, std::uint64_t thirds, std::uint64_t fourths) noexcept {
    // The scalar value less 10000 hex, shifted down by 10: all of its high bits are in the first three bytes.
    const __m512i high =
        Or(UnitField<0x07, 8>(bytes.first), UnitField<0x3F, 2>(bytes.second), UnitField<0x30, -4>(bytes.third));
    const __m512i lead = _mm512_add_epi16(high, Units16(0xD800 - (0x10000 >> 10)));
    const __m512i low = Or(UnitField<0x0F, 6>(bytes.second), UnitField<0x3F, 0>(bytes.third));
    const __m512i trail = Or(low, Units16(0xDC00));
    const __m512i units = _mm512_mask_mov_epi16(UnitsUpToThree(bytes), static_cast<__mmask32>(thirds), lead);
    return _mm512_mask_mov_epi16(units, static_cast<__mmask32>(fourths), trail);
}

void PutUpToFour(Block block, Block before, std::uint64_t ends, std::uint64_t thirds, std::uint64_t fourths,
                 unsigned char*& to) noexcept {
    const __m512i behind1 = At(kBehind<1>, block, before);
    const __m512i behind2 = At(kBehind<2>, block, before);
    PutKept(to, UnitsUpToFour(TripleOf<0>(block, behind1, behind2), thirds, fourths), ends);
    PutKept(to, UnitsUpToFour(TripleOf<1>(block, behind1, behind2), thirds >> 32, fourths >> 32), ends >> 32);
}

// ---- UTF-16 to UTF-8 ----------------------------------------------------------------------------

/// Stands for a byte that a character does not have; no byte of UTF-8 is this one.
constexpr unsigned kNoByte = 0xFF;

void PutBytes(unsigned char*& to, __m512i bytes) noexcept {
    const std::uint64_t kept = _mm512_cmpneq_epu8_mask(bytes, Bytes8(kNoByte));
    Store(to, _mm512_maskz_compress_epi8(kept, bytes));
    to += std::popcount(kept);
}

/// Units 16 * kHalf to 16 * kHalf + 15, one a word.
template <int kHalf>
__m512i Words(__m512i units) noexcept {
    return _mm512_cvtepu16_epi32(HalfOf<kHalf>(units));
}

/// The bytes of units of three bytes, in words.
__m512i ThreeBytes(__m512i units) noexcept {
    return Or(Or(_mm512_srli_epi32(units, 12), WordField<0x0FC0, 2>(units), WordField<0x3F, 16>(units)),
              Words32(0x8080E0 | kNoByte << 24));
}

constexpr Places FirstThreeOfFour() {
    Places places{};
    for (std::size_t i = 0; i < 48; ++i) {
        places[i] = static_cast<unsigned char>(i / 3 * 4 + i % 3);
    }
    return places;
}
alignas(64) constexpr Places kFirstThreeOfFour = FirstThreeOfFour();

void PutThreeBytes(unsigned char*& to, __m512i units) noexcept {
    Store(to, _mm512_permutexvar_epi8(_mm512_load_si512(kFirstThreeOfFour.data()), ThreeBytes(units)));
    to += 48;
}

/// Sixteen pairs and nothing else.
void PutPairs(unsigned char*& to, __m512i pairs) noexcept {
    const __m512i scalars =
        _mm512_add_epi32(Or(WordField<0x3FF, 10>(pairs), WordField<0x3FF0000, -16>(pairs)), Words32(0x10000));
    const __m512i head = Or(_mm512_srli_epi32(scalars, 18), WordField<0x3F000, 8 - 12>(scalars));
    const __m512i tail = Or(WordField<0xFC0, 16 - 6>(scalars), WordField<0x3F, 24>(scalars));
    Store(to, Or(head, tail, Words32(0x808080F0)));
    to += 64;
}

/// What the units of a block are, a bit for each.
struct UnitKinds {
    __mmask32 two;    ///< Has two bytes or more.
    __mmask32 three;  ///< Has three bytes, or belongs to a pair.
    __mmask32 pair;
    __mmask32 trail;
    __mmask32 used;
};

/// `behind` are the units in front of each.
template <int kHalf>
void PutMixed(unsigned char*& to, __m512i block, __m512i behind, const UnitKinds& kinds) noexcept {
    const auto half = [](__mmask32 bits) { return static_cast<__mmask16>(bits >> 16 * kHalf); };
    constexpr unsigned noThird = kNoByte << 16 | kNoByte << 24;
    const __m512i units = Words<kHalf>(block);
    const __m512i two = Or(_mm512_srli_epi32(units, 6), WordField<0x3F, 8>(units), Words32(0x80C0 | noThird));
    __m512i bytes = Or(units, Words32(kNoByte << 8 | noThird));
    bytes = _mm512_mask_mov_epi32(bytes, half(kinds.two), two);
    bytes = _mm512_mask_mov_epi32(bytes, half(kinds.three), ThreeBytes(units));
    if (kinds.pair != 0) {
        // Each half of a pair makes two of the four bytes. 40 hex is 10000 without its ten low bits.
        const __m512i high = _mm512_add_epi32(WordField<0x3FF, 0>(units), Words32(0x40));
        const __m512i first = Or(_mm512_srli_epi32(high, 8), WordField<0xFC, 6>(high), Words32(0x80F0 | noThird));
        const __m512i third = Or(WordField<0x3C0, -6>(units), WordField<0x3, 4>(Words<kHalf>(behind)));
        const __m512i second = Or(third, WordField<0x3F, 8>(units), Words32(0x8080 | noThird));
        bytes = _mm512_mask_mov_epi32(bytes, half(kinds.pair), first);
        bytes = _mm512_mask_mov_epi32(bytes, half(kinds.trail), second);
    }
    PutBytes(to, _mm512_mask_mov_epi32(_mm512_set1_epi32(-1), half(kinds.used), bytes));
}

bool PutAsciiUnits(Block block, unsigned char* to) noexcept {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm512_cvtepi16_epi8(block));
    return _mm512_cmpge_epu16_mask(block, Units16(0x80)) == 0;
}

std::size_t ConvertUnits(Block block, unsigned char*& to) noexcept {
    UnitKinds kinds{};
    kinds.two = _mm512_cmpge_epu16_mask(block, Units16(0x80));
    kinds.three = _mm512_cmpge_epu16_mask(block, Units16(0x800));
    if (kinds.three == 0) {
        const __m512i two = Or(_mm512_srli_epi16(block, 6), UnitField<0x3F, 8>(block), Units16(0x80C0));
        PutBytes(to, _mm512_mask_mov_epi16(Or(block, Units16(kNoByte << 8)), kinds.two, two));
        return 64;
    }
    constexpr __mmask32 all = 0xFFFFFFFF;
    const __m512i top = UnitField<0xF800, 0>(block);
    kinds.pair = _mm512_cmpeq_epu16_mask(top, Units16(0xD800));
    if (kinds.pair == 0 && kinds.three == all) {
        PutThreeBytes(to, Words<0>(block));
        PutThreeBytes(to, Words<1>(block));
        return 64;
    }
    kinds.used = all;
    __m512i behind = block;
    std::size_t taken = 64;
    if (kinds.pair != 0) {
        kinds.trail = _mm512_mask_cmpge_epu16_mask(kinds.pair, block, Units16(0xDC00));
        const __mmask32 leads = kinds.pair & ~kinds.trail;
        if (leads << 1 != kinds.trail) {
            return 0;
        }
        if (leads >> 31 != 0) {
            // The pair's other half is in the next block, which begins with it.
            kinds.used >>= 1;
            taken = 62;
        } else if (kinds.pair == all) {
            PutPairs(to, block);
            return 64;
        }
        behind = At(kBehind<2>, block, _mm512_setzero_si512());
    }
    PutMixed<0>(to, block, behind, kinds);
    PutMixed<1>(to, block, behind, kinds);
    return taken;
}

}  // namespace

#include "Source/Utf8/Utf8Blocks.inc"

}  // namespace Lum::Internal::TextConversion::Avx512

LUM_TARGET_END
#endif
