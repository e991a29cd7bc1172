// The two directions of an ICU converter: every call of ICU, under names that both directions have.
#pragma once

#include <unicode/ucnv.h>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <string_view>

#include "Platform/TextEncoding/Cursor.h"

namespace TextConversion {

struct IcuCloser {
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};
using IcuHandle = std::unique_ptr<UConverter, IcuCloser>;

/// How much ICU is given at a time where the result does not go to the output itself.
constexpr std::size_t kPiece = 64;
/// ICU refuses blocks of 2 GB.
constexpr std::size_t kLargestBlock = std::size_t{1} << 28;

/// Where one call of ICU reads and writes; the call moves `from` and `to`. `offsets` may be null: for
/// each unit written, the index of what it was made from, or -1 for what an earlier call was given.
template <class From, class To>
struct IcuRun {
    const From* from;
    const From* fromEnd;
    To* to;
    To* toEnd;
    std::int32_t* offsets;
};

inline OSStatus StatusOf(UErrorCode error) {
    switch (error) {
        case U_BUFFER_OVERFLOW_ERROR:
            return noErr;
        case U_INVALID_CHAR_FOUND:
            return kTECUnmappableElementErr;
        case U_MEMORY_ALLOCATION_ERROR:
            throw std::bad_alloc();
        default:
            return U_SUCCESS(error) != 0 ? noErr : kTextMalformedInputErr;
    }
}

struct IcuToUtf16 {
    using From = unsigned char;
    using To = char16_t;
    using Run = IcuRun<From, To>;
    /// The most units that a character becomes.
    static constexpr std::size_t kLongest = 4;
    static std::size_t LongestWithoutState(const UConverter* /*converter*/) { return kLongest; }
    /// With little room as many bytes as could fit it, and one character more.
    static std::size_t PieceFor(std::size_t room) { return std::min(kPiece, 2 * room + 4); }

    /// Leaves the error standing, but for a shift sequence behind another one with nothing between them:
    /// texts that are put together from pieces have such.
    static void Stop(const void* /*context*/, UConverterToUnicodeArgs* /*run*/, const char* /*bytes*/,
                     std::int32_t /*size*/, UConverterCallbackReason reason, UErrorCode* error) {
        if (reason == UCNV_IRREGULAR) {
            *error = U_ZERO_ERROR;
        }
    }
    static void Prepare(UConverter* converter, UErrorCode& error) {
        ucnv_setToUCallBack(converter, Stop, nullptr, nullptr, nullptr, &error);
    }
    static void Reset(UConverter* converter) { ucnv_resetToUnicode(converter); }
    static void Convert(UConverter* converter, Run& run, bool isEnd, UErrorCode& error) {
        const char* from = reinterpret_cast<const char*>(run.from);
        ucnv_toUnicode(converter, &run.to, run.toEnd, &from, reinterpret_cast<const char*>(run.fromEnd), run.offsets,
                       isEnd ? 1 : 0, &error);
        run.from = reinterpret_cast<const From*>(from);
    }

    static std::span<const From> Units(Input bytes, std::array<From, kPiece>& /*copies*/) {
        return bytes.first(std::min(bytes.size(), kLargestBlock));
    }
    static std::span<const From> WithoutHalfPair(std::span<const From> units) { return units; }
    /// What to convert at a time of UTF-7: a "+" ends it. Hence ICU always holds one before the first
    /// character in base64, which then begins with it, however the text was cut.
    static std::span<const From> Utf7Piece(std::span<const From> units) {
        const auto plus = std::find(units.begin(), units.end(), '+');
        return {units.begin(), plus == units.end() ? plus : plus + 1};
    }
    /// What to convert behind the end of a text, without keeping what becomes of it.
    static std::span<const From> Ending(const UConverter* /*converter*/) { return {}; }
    /// Whether a character begins with the unit at `written`, which is not the first.
    static bool BeginsCharacter(const To* written, std::span<const From> /*units*/, std::int32_t /*offset*/) {
        return !IsTrailSurrogate(written[0]) || !IsLeadSurrogate(written[-1]);
    }
    /// How much of what ICU has taken stands behind the start of the bad element that it met.
    static std::size_t FaultSize(const UConverter* converter) {
        std::array<char, 32> bytes;
        auto size = static_cast<std::int8_t>(bytes.size());
        UErrorCode error = U_ZERO_ERROR;
        ucnv_getInvalidChars(converter, bytes.data(), &size, &error);
        return static_cast<std::size_t>(size) + static_cast<std::size_t>(ucnv_toUCountPending(converter, &error));
    }
    /// How much ICU has taken of an element whose end it has not seen.
    static std::size_t Held(const UConverter* converter) {
        if (ucnv_getType(converter) == UCNV_HZ) {
            // Not counted there. Between two elements "~}" writes nothing, even where it is out of place.
            const Trial trial = Try(converter, "~}", false);
            return trial.written == 0 && (U_SUCCESS(trial.error) != 0 || trial.error == U_ILLEGAL_ESCAPE_SEQUENCE) ? 0
                                                                                                                   : 1;
        }
        UErrorCode error = U_ZERO_ERROR;
        return static_cast<std::size_t>(ucnv_toUCountPending(converter, &error));
    }
    /// Whether a text may end where ICU is, though it holds something: in UTF-7 the last byte of a
    /// character holds the first bits of what follows.
    static bool MayEnd(const UConverter* converter) {
        return ucnv_getType(converter) == UCNV_UTF7 && U_SUCCESS(Try(converter, "", true).error) != 0;
    }

private:
    struct Trial {
        UErrorCode error;
        std::size_t written;
    };
    /// What a copy of the converter makes of more bytes.
    static Trial Try(const UConverter* converter, std::string_view bytes, bool isEnd) {
        UErrorCode error = U_ZERO_ERROR;
        const IcuHandle copy(ucnv_clone(converter, &error));
        if (U_FAILURE(error) != 0) {
            throw std::bad_alloc();
        }
        const From* const from = reinterpret_cast<const From*>(bytes.data());
        std::array<To, kLongest> units;
        Run run{from, from + bytes.size(), units.data(), units.data() + units.size(), nullptr};
        error = U_ZERO_ERROR;
        Convert(copy.get(), run, isEnd, error);
        return {error, static_cast<std::size_t>(run.to - units.data())};
    }
};

struct IcuFromUtf16 {
    using From = char16_t;
    using To = unsigned char;
    using Run = IcuRun<From, To>;
    /// The most bytes that a character becomes, with its shift sequences.
    static constexpr std::size_t kLongest = 16;
    static std::size_t LongestWithoutState(const UConverter* converter) {
        return std::min(static_cast<std::size_t>(ucnv_getMaxCharSize(converter)), kLongest);
    }
    /// With little room as many units as could fit it, and the next pair.
    static std::size_t PieceFor(std::size_t room) { return std::min(kPiece, room + 2); }

    /// ICU's own callback for stopping passes over characters that are not seen, as U+FEFF and U+00AD, where
    /// the encoding has none of them. This one leaves the error standing for every character.
    static void Stop(const void* /*context*/, UConverterFromUnicodeArgs* /*run*/, const char16_t* /*units*/,
                     std::int32_t /*size*/, UChar32 /*scalar*/, UConverterCallbackReason /*reason*/,
                     UErrorCode* /*error*/) {}
    static void Prepare(UConverter* converter, UErrorCode& error) {
        ucnv_setFromUCallBack(converter, Stop, nullptr, nullptr, nullptr, &error);
        // A fallback is a substitute.
        ucnv_setFallback(converter, 0);
    }
    static void Reset(UConverter* converter) { ucnv_resetFromUnicode(converter); }
    static void Convert(UConverter* converter, Run& run, bool isEnd, UErrorCode& error) {
        char* to = reinterpret_cast<char*>(run.to);
        ucnv_fromUnicode(converter, &to, reinterpret_cast<const char*>(run.toEnd), &run.from, run.fromEnd, run.offsets,
                         isEnd ? 1 : 0, &error);
        run.to = reinterpret_cast<To*>(to);
    }

    /// The input as units; where it is not aligned, a copy of its beginning.
    static std::span<const From> Units(Input bytes, std::array<From, kPiece>& copies) {
        const std::size_t size = std::min(bytes.size() / sizeof(From), kLargestBlock);
        if (reinterpret_cast<std::uintptr_t>(bytes.data()) % alignof(From) == 0) {
            return {reinterpret_cast<const From*>(bytes.data()), size};
        }
        const std::size_t copied = std::min(size, copies.size());
        std::memcpy(copies.data(), bytes.data(), copied * sizeof(From));
        return {copies.data(), copied};
    }
    /// Pairs of surrogates are not divided, so that ICU never holds half of one. It may see a second first
    /// half, at which it finds the one before wanting.
    static std::span<const From> WithoutHalfPair(std::span<const From> units) {
        const std::size_t size = units.size();
        const bool isHalf =
            size > 0 && IsLeadSurrogate(units[size - 1]) && (size == 1 || !IsLeadSurrogate(units[size - 2]));
        return units.first(isHalf ? size - 1 : size);
    }
    /// What to convert at a time of UTF-7: all before an unpaired surrogate.
    static std::span<const From> Utf7Piece(std::span<const From> units) {
        const auto bytesAt = [&](std::size_t i) { return reinterpret_cast<const unsigned char*>(units.data() + i); };
        std::size_t i = 0;
        while (i != units.size() && Utf16Fault(bytesAt(i), bytesAt(units.size())) == noErr) {
            i += IsLeadSurrogate(units[i]) ? 2 : 1;
        }
        return units.first(i);
    }
    /// ICU forgets to leave the two-byte state at the end of HZ, but not at a line's.
    static std::span<const From> Ending(const UConverter* converter) {
        return {u"\n", ucnv_getType(converter) == UCNV_HZ ? std::size_t{1} : 0};
    }
    static bool BeginsCharacter(const To* /*written*/, std::span<const From> units, std::int32_t offset) {
        return offset < 0 || !IsTrailSurrogate(units[static_cast<std::size_t>(offset)]);
    }
    static std::size_t FaultSize(const UConverter* converter) {
        std::array<char16_t, 32> units;
        auto size = static_cast<std::int8_t>(units.size());
        UErrorCode error = U_ZERO_ERROR;
        ucnv_getInvalidUChars(converter, units.data(), &size, &error);
        return static_cast<std::size_t>(size) + static_cast<std::size_t>(ucnv_fromUCountPending(converter, &error));
    }
    /// What ICU holds are whole characters, because the next one could change how they are written. They
    /// count as read: the flush writes them at the latest.
    static std::size_t Held(const UConverter* /*converter*/) { return 0; }
    static bool MayEnd(const UConverter* /*converter*/) { return false; }
};

}  // namespace TextConversion
