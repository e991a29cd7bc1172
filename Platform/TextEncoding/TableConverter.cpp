// The loops over an encoding's tables.
//
// What is in no table is left to an ICU converter, a short stretch at a time: codes of more than two bytes, pairs
// of surrogates, characters that one direction alone has, and everything malformed. So ICU's answers are the only
// ones, and what is common does not pay for a call.
#include "Platform/TextEncoding/TableConverter.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <new>

#include "Platform/TextEncoding/EncodingTables.h"
#include "Source/Base/Cpu.h"
#include "Source/Utf8/Cursor.h"
#ifdef __SSE2__
#include "Platform/TextEncoding/SingleBytesAvx2.h"
#endif

namespace Lum::Internal::TextConversion {

namespace {

// ---- The loops ----------------------------------------------------------------------------------

/// What a loop ends with where the next element is not in the table.
constexpr OSStatus kNotInTable = 1;
constexpr std::size_t kBlock = 16;

struct ToUtf16 {
    /// Skips blocks of characters below `end`, which is at most 80 hex.
    static void SkimAscii(std::uint32_t end, Cursor& cursor) noexcept {
        while (cursor.Left() >= kBlock && cursor.Space() >= 2 * kBlock) {
            unsigned char bytes[kBlock];
            std::memcpy(bytes, cursor.from, kBlock);
            unsigned char isOther = 0;
            for (const unsigned char byte : bytes) {
                isOther = static_cast<unsigned char>(isOther | (byte >= end));
            }
            if (isOther != 0) {
                return;
            }
            for (std::size_t i = 0; i < kBlock; ++i) {
                StoreUnit(cursor.to + 2 * i, bytes[i]);
            }
            cursor.Advance(kBlock, 2 * kBlock);
        }
    }
    /// For encodings of one byte a character: no branch depends on what a byte is.
    static void SkimSingleBytes(const Tables& tables, Cursor& cursor) noexcept {
        const std::uint16_t* const units = tables.singles.data();
#ifdef __SSE2__
        constexpr std::size_t kLongEnough = 256;  // to be worth the preparation
        if (cursor.Left() >= kLongEnough && tables.asciiEnd == 0x80 && UsedCpu() >= CpuTier::kAvx2) {
            Avx2::SkimSingleBytes(units, cursor);
        }
#endif
        while (cursor.Left() >= kBlock && cursor.Space() >= 2 * kBlock) {
            std::uint32_t isNone = 0;
#pragma GCC unroll 16
            for (std::size_t i = 0; i < kBlock; ++i) {
                const std::uint32_t unit = units[cursor.from[i]];
                isNone |= unit + 1;  // Only kNone reaches the seventeenth bit.
                StoreUnit(cursor.to + 2 * i, unit);
            }
            if (isNone > kNone) {
                return;
            }
            cursor.Advance(kBlock, 2 * kBlock);
        }
    }
    /// Converts blocks of characters of two bytes each. A byte that is not the first of two is in no pair.
    static void SkimPairs(const Tables& tables, Cursor& cursor) noexcept {
        while (cursor.Left() >= 2 * kBlock && cursor.Space() >= 2 * kBlock) {
            const unsigned char* const from = cursor.from;
            unsigned char* const to = cursor.to;
            std::uint32_t isNone = 0;
#pragma GCC unroll 16
            for (std::size_t i = 0; i < 2 * kBlock; i += 2) {
                const std::uint32_t unit = tables.pairs(from[i], from[i + 1]);
                isNone |= unit + 1;  // Only kNone reaches the seventeenth bit.
                StoreUnit(to + i, unit);
            }
            if (isNone > kNone) {
                return;
            }
            cursor.Advance(2 * kBlock, 2 * kBlock);
        }
    }
    /// Converts blocks up to the first character that is not in the table.
    static void SkimBlocks(const Tables& tables, Cursor& cursor) noexcept {
        for (;;) {
            if (cursor.Left() >= kBlock && *cursor.from < tables.asciiEnd) {
                SkimAscii(tables.asciiEnd, cursor);
            }
            if (cursor.Left() < 2 * kBlock || cursor.Space() < 2 * kBlock) {
                return;
            }
            Cursor at = cursor;
#pragma GCC unroll 4
            for (std::size_t i = 0; i < kBlock; ++i) {
                const std::uint32_t byte = *at.from;
                const bool isTwo = tables.isFirstOfTwo[byte];
                const std::uint32_t unit = isTwo ? tables.pairs(byte, at.from[1]) : tables.singles[byte];
                if (unit == kNone) {
                    cursor = at;
                    return;
                }
                StoreUnit(at.to, unit);
                at.Advance(isTwo ? 2 : 1, 2);
            }
            const bool arePairs = at.from - cursor.from == 2 * kBlock;
            cursor = at;
            if (arePairs) {
                SkimPairs(tables, cursor);
            }
        }
    }
    static OSStatus Run(const Tables& tables, Cursor& cursor) noexcept {
        if (tables.hasTwo) {
            SkimBlocks(tables, cursor);
        } else {
            SkimSingleBytes(tables, cursor);
        }
        while (cursor.Left() != 0) {
            const std::uint32_t byte = *cursor.from;
            const std::size_t size = tables.isFirstOfTwo[byte] ? 2 : 1;
            if (cursor.Left() < size) {
                return kNotInTable;
            }
            const std::uint32_t unit = size == 2 ? tables.pairs(byte, cursor.from[1]) : tables.singles[byte];
            if (unit == kNone) {
                return kNotInTable;
            }
            if (cursor.Space() < 2) {
                return kTECOutputBufferFullStatus;
            }
            StoreUnit(cursor.to, unit);
            cursor.Advance(size, 2);
        }
        return noErr;
    }
};

struct FromUtf16 {
    /// Stores the low byte and then the high one.
    static void StoreBytes(unsigned char* to, std::uint32_t code) noexcept {
        if constexpr (std::endian::native == std::endian::big) {
            code = (code & 0xFF) << 8 | code >> 8;
        }
        StoreUnit(to, code);
    }
    static void SkimAscii(std::uint32_t end, Cursor& cursor) noexcept {
        while (cursor.Left() >= 2 * kBlock && cursor.Space() >= kBlock) {
            std::uint16_t units[kBlock];
            std::memcpy(units, cursor.from, sizeof units);
            std::uint16_t isOther = 0;
            for (const std::uint16_t unit : units) {
                isOther = static_cast<std::uint16_t>(isOther | (unit >= end));
            }
            if (isOther != 0) {
                return;
            }
            for (std::size_t i = 0; i < kBlock; ++i) {
                cursor.to[i] = static_cast<unsigned char>(units[i]);
            }
            cursor.Advance(2 * kBlock, kBlock);
        }
    }
    /// Converts blocks up to the first that has a unit without a code. No branch depends on what a unit is.
    template <bool kHasTwo>
    static void SkimBlocks(const Tables& tables, Cursor& cursor) noexcept {
        for (;;) {
            if (cursor.Left() >= 2 * kBlock && LoadUnit(cursor.from) < tables.asciiEnd) {
                SkimAscii(tables.asciiEnd, cursor);
            }
            if (cursor.Left() < 2 * kBlock || cursor.Space() < 2 * kBlock) {
                return;
            }
            unsigned char* to = cursor.to;
            std::uint32_t isNone = 0;
#pragma GCC unroll 16
            for (std::size_t i = 0; i < kBlock; ++i) {
                const std::uint32_t code = tables.codes[LoadUnit(cursor.from + 2 * i)];
                isNone |= code + 1;  // Only kNone reaches the seventeenth bit.
                if constexpr (kHasTwo) {
                    StoreBytes(to, code);
                    to += code > 0xFF ? 2 : 1;
                } else {
                    *to++ = static_cast<unsigned char>(code);
                }
            }
            if (isNone > kNone) {
                return;
            }
            cursor.Advance(2 * kBlock, static_cast<std::size_t>(to - cursor.to));
        }
    }
    static OSStatus Run(const Tables& tables, Cursor& cursor) noexcept {
        tables.hasTwo ? SkimBlocks<true>(tables, cursor) : SkimBlocks<false>(tables, cursor);
        while (cursor.Left() >= 2) {
            const std::uint32_t code = tables.codes[LoadUnit(cursor.from)];
            if (code == kNone) {
                return kNotInTable;
            }
            const std::size_t size = code > 0xFF ? 2 : 1;
            if (cursor.Space() < size) {
                return kTECOutputBufferFullStatus;
            }
            if (size == 2) {
                StoreBytes(cursor.to, code);
            } else {
                *cursor.to = static_cast<unsigned char>(code);
            }
            cursor.Advance(2, size);
        }
        return cursor.Left() == 0 ? OSStatus{noErr} : kNotInTable;
    }
};

template <class Direction>
class TableConverter final : public Converter {
public:
    TableConverter(TabledEncoding& encoding, MakeIcuConverter makeIcu) noexcept
        : m_Encoding(encoding), m_MakeIcu(makeIcu) {}

    Step Convert(Input input, Output output) override {
        const Tables& tables = m_Encoding.GetTables();
        if (!tables.isUsable) {
            return Icu().Convert(input, output);
        }
        Cursor cursor(input, output);
        const auto stop = [&](OSStatus status) {
            return Step{status, input.size() - cursor.Left(), output.size() - cursor.Space()};
        };
        for (std::size_t stretch = kShortest;; stretch = std::min(2 * stretch, kLongest)) {
            const unsigned char* const start = cursor.from;
            const OSStatus status = Direction::Run(tables, cursor);
            if (status != kNotInTable) {
                return stop(status);
            }
            if (cursor.from - start > static_cast<std::ptrdiff_t>(stretch)) {
                stretch = kShortest;
            }
            const std::size_t size = std::min(stretch, cursor.Left());
            const bool isAll = size == cursor.Left();
            const Step step = Icu().Convert({cursor.from, size}, {cursor.to, cursor.Space()});
            Clear();  // Neither the tables nor what is left to ICU has a state.
            cursor.Advance(step.read, step.written);
            // A stretch may end within a character, if it ends before the text.
            const bool goesOn = step.status == noErr || (step.status == kTECPartialCharErr && !isAll);
            if (!goesOn || cursor.Left() == 0) {
                return stop(step.status);
            }
        }
    }
    Step Flush(Output output) override { return m_Icu != nullptr ? m_Icu->Flush(output) : Step{noErr, 0, 0}; }
    void Clear() override {
        if (m_Icu != nullptr) {
            m_Icu->Clear();
        }
    }

private:
    Converter& Icu() {
        if (m_Icu == nullptr) {
            m_Icu = m_MakeIcu(m_Encoding.Name());
            if (m_Icu == nullptr) {
                throw std::bad_alloc();  // One like it has been made before.
            }
        }
        return *m_Icu;
    }

    static constexpr std::size_t kShortest = 32;
    static constexpr std::size_t kLongest = 4096;

    TabledEncoding& m_Encoding;
    MakeIcuConverter m_MakeIcu;
    std::unique_ptr<Converter> m_Icu;  ///< Null until it is needed.
};

template <class Direction>
std::unique_ptr<Converter> Make(std::string_view name, MakeIcuConverter makeIcu) {
    if (TabledEncoding* const encoding = TabledEncoding::Find(name)) {
        return std::make_unique<TableConverter<Direction>>(*encoding, makeIcu);
    }
    return makeIcu(name);
}

}  // namespace

std::unique_ptr<Converter> MakeTableToUtf16(std::string_view name, MakeIcuConverter makeIcu) {
    return Make<ToUtf16>(name, makeIcu);
}

std::unique_ptr<Converter> MakeTableFromUtf16(std::string_view name, MakeIcuConverter makeIcu) {
    return Make<FromUtf16>(name, makeIcu);
}

}  // namespace Lum::Internal::TextConversion
