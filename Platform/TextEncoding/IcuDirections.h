// All calls of ICU: two classes, one for each direction, with the same operations. IcuConverter.cpp is
// written once, in terms of these.
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

#include "Platform/TextEncoding/Converter.h"
#include "Source/Utf8/Cursor.h"

namespace Lum::Internal::TextConversion {

struct IcuCloser {
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};
using IcuHandle = std::unique_ptr<UConverter, IcuCloser>;

/// The largest block that is given to ICU where the result does not go to the output directly.
constexpr std::size_t kPiece = 64;
/// ICU refuses blocks of 2 GB.
constexpr std::size_t kLargestBlock = std::size_t{1} << 28;

/// What one call of ICU reads and writes. The call moves `from` and `to`. `offsets` may be null; otherwise it
/// gets, for each unit written, the index of the input unit that it was made from, or -1 if that was in the
/// input of an earlier call.
template <class From, class To>
struct IcuRun {
    const From* from;
    const From* fromEnd;
    To* to;
    To* toEnd;
    std::int32_t* offsets;
};

/// To be called with every error code of ICU.
inline UErrorCode Checked(UErrorCode error) {
    if (error == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc();
    }
    return error;
}

inline OSStatus StatusOf(UErrorCode error) {
    switch (Checked(error)) {
        case U_BUFFER_OVERFLOW_ERROR:
            return noErr;
        case U_INVALID_CHAR_FOUND:
            return kTECUnmappableElementErr;
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
    /// How much input to convert for `space` bytes of output: as much as could fit, and one character more.
    static std::size_t PieceFor(std::size_t space) { return std::min(kPiece, 2 * space + 4); }

    /// ICU calls this at an error. It keeps the error, except for a shift sequence that directly follows
    /// another one: texts that were joined from parts have such sequences.
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
    static std::span<const From> Utf7Piece(std::span<const From> units) { return units; }
    /// Input to convert after the end of a text; its own output is dropped.
    static std::span<const From> Ending(const UConverter* /*converter*/) { return {}; }
    /// Whether a character begins with the unit at `written`, which is not the first one.
    static bool BeginsCharacter(const To* written, std::span<const From> /*units*/, std::int32_t /*offset*/) {
        return !IsTrailSurrogate(written[0]) || !IsLeadSurrogate(written[-1]);
    }
    /// How many of the units that ICU has consumed follow the start of the bad element.
    static std::size_t FaultSize(const UConverter* converter) {
        std::array<char, 32> bytes;
        auto size = static_cast<std::int8_t>(bytes.size());
        UErrorCode error = U_ZERO_ERROR;
        ucnv_getInvalidChars(converter, bytes.data(), &size, &error);
        return static_cast<std::size_t>(size) + static_cast<std::size_t>(ucnv_toUCountPending(converter, &error));
    }
    /// How many units ICU has consumed of an element whose end it has not got yet.
    static std::size_t Held(const UConverter* converter) {
        if (ucnv_getType(converter) == UCNV_HZ) {
            // ICU does not count them for HZ. Between two elements, "~}" writes nothing, even if it is not
            // expected there; inside an element it does.
            const Trial trial = Try(converter, "~}", false);
            return trial.written == 0 && (U_SUCCESS(trial.error) != 0 || trial.error == U_ILLEGAL_ESCAPE_SEQUENCE) ? 0
                                                                                                                   : 1;
        }
        UErrorCode error = U_ZERO_ERROR;
        return static_cast<std::size_t>(ucnv_toUCountPending(converter, &error));
    }

private:
    struct Trial {
        UErrorCode error;
        std::size_t written;
    };
    /// Converts more bytes with a copy of the converter.
    static Trial Try(const UConverter* converter, std::string_view bytes, bool isEnd) {
        UErrorCode error = U_ZERO_ERROR;
        const IcuHandle copy(ucnv_clone(converter, &error));
        if (U_FAILURE(error) != 0) {
            throw std::bad_alloc();  // The copy of a valid converter can fail for no other reason.
        }
        const From* const from = reinterpret_cast<const From*>(bytes.data());
        std::array<To, kLongest> units;
        Run run{from, from + bytes.size(), units.data(), units.data() + units.size(), nullptr};
        error = U_ZERO_ERROR;
        Convert(copy.get(), run, isEnd, error);
        return {Checked(error), static_cast<std::size_t>(run.to - units.data())};
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
    /// How many units to convert for `space` bytes of output: as many as could fit, and one pair more.
    static std::size_t PieceFor(std::size_t space) { return std::min(kPiece, space + 2); }

    /// ICU calls this at an error. ICU's own callback for stopping drops invisible characters, such as U+FEFF
    /// and U+00AD, where the encoding lacks them. This one keeps the error for every character.
    static void Stop(const void* /*context*/, UConverterFromUnicodeArgs* /*run*/, const char16_t* /*units*/,
                     std::int32_t /*size*/, UChar32 /*scalar*/, UConverterCallbackReason /*reason*/,
                     UErrorCode* /*error*/) {}
    static void Prepare(UConverter* converter, UErrorCode& error) {
        ucnv_setFromUCallBack(converter, Stop, nullptr, nullptr, nullptr, &error);
        // A fallback would be a substitute, and nothing is substituted.
        ucnv_setFallback(converter, 0);
    }
    static void Reset(UConverter* converter) { ucnv_resetFromUnicode(converter); }
    static void Convert(UConverter* converter, Run& run, bool isEnd, UErrorCode& error) {
        char* to = reinterpret_cast<char*>(run.to);
        ucnv_fromUnicode(converter, &to, reinterpret_cast<const char*>(run.toEnd), &run.from, run.fromEnd, run.offsets,
                         isEnd ? 1 : 0, &error);
        run.to = reinterpret_cast<To*>(to);
    }

    /// The input as units. Where it is not aligned: a copy of its first units.
    static std::span<const From> Units(Input bytes, std::array<From, kPiece>& copies) {
        const std::size_t size = std::min(bytes.size() / sizeof(From), kLargestBlock);
        if (reinterpret_cast<std::uintptr_t>(bytes.data()) % alignof(From) == 0) {
            return {reinterpret_cast<const From*>(bytes.data()), size};
        }
        const std::size_t copied = std::min(size, copies.size());
        std::memcpy(copies.data(), bytes.data(), copied * sizeof(From));
        return {copies.data(), copied};
    }
    /// The units without a lead surrogate at the end, so that ICU never keeps half of a pair. If there are two
    /// lead surrogates at the end, both stay: ICU then reports the first one as malformed.
    static std::span<const From> WithoutHalfPair(std::span<const From> units) {
        const std::size_t size = units.size();
        const bool isHalf =
            size > 0 && IsLeadSurrogate(units[size - 1]) && (size == 1 || !IsLeadSurrogate(units[size - 2]));
        return units.first(isHalf ? size - 1 : size);
    }
    /// The units before the first unpaired surrogate, which ICU would write in UTF-7.
    static std::span<const From> Utf7Piece(std::span<const From> units) {
        const auto bytesAt = [&](std::size_t i) { return reinterpret_cast<const unsigned char*>(units.data() + i); };
        std::size_t i = 0;
        while (i != units.size() && Utf16Fault(bytesAt(i), bytesAt(units.size())) == Ending::kDone) {
            i += IsLeadSurrogate(units[i]) ? 2 : 1;
        }
        return units.first(i);
    }
    /// ICU does not leave the two-byte state at the end of a text in HZ, but it does at the end of a line.
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
    /// What ICU keeps here are whole characters, because the next one could change how they are written. They
    /// count as read, since the flush writes them at the latest.
    static std::size_t Held(const UConverter* /*converter*/) { return 0; }
};

}  // namespace Lum::Internal::TextConversion
