// The tables of an encoding, how they are filled, and the loops over them.
//
// A table holds what is one unit of UTF-16 on one side and one byte or two on the other, and only where ICU
// converts either to the other. All else is left to an ICU converter, a short stretch at a time: longer codes,
// pairs of surrogates, characters that one direction alone has, and everything malformed. So ICU's answers are
// the only ones, and what is common does not pay for a call.
#include "Platform/TextEncoding/TableConverter.h"

#include <unicode/uset.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Platform/TextEncoding/EncodingNames.h"
#include "Platform/TextEncoding/IcuDirections.h"

namespace Lum::Internal::TextConversion {

namespace {

/// What is in no table. No character is this unit, and no code of two bytes ends with a 0 byte.
constexpr std::uint16_t kNone = 0xFFFF;

/// From 16 bits to 16 bits, in pages of which those without an entry are one.
class PagedTable {
public:
    PagedTable() {
        m_Empty.fill(kNone);
        m_Pages.fill(&m_Empty);
    }
    PagedTable(const PagedTable&) = delete;
    PagedTable& operator=(const PagedTable&) = delete;
    ~PagedTable() {
        for (const Page* const page : m_Pages) {
            if (page != &m_Empty) {
                delete page;
            }
        }
    }

    [[nodiscard]] std::uint32_t operator()(std::uint32_t high, std::uint32_t low) const noexcept {
        return (*m_Pages[high])[low];
    }
    [[nodiscard]] std::uint32_t operator[](std::uint32_t index) const noexcept {
        return (*this)(index >> 8, index & 0xFF);
    }
    /// The entries of 0 to 255.
    [[nodiscard]] const std::uint16_t* Page0() const noexcept { return m_Pages[0]->data(); }
    void Set(std::uint32_t index, std::uint32_t value) {
        Page*& page = m_Pages[index >> 8];
        if (page == &m_Empty) {
            page = new Page(m_Empty);
        }
        (*page)[index & 0xFF] = static_cast<std::uint16_t>(value);
    }

private:
    using Page = std::array<std::uint16_t, 256>;

    Page m_Empty;
    std::array<Page*, 256> m_Pages;
};

struct Tables {
    PagedTable units;  ///< By code: a byte, or the first of two above the second.
    PagedTable codes;  ///< By unit.
    std::array<bool, 256> isFirstOfTwo{};
    /// All bytes below this one are the ASCII characters that they look like. The loops skip blocks of them.
    std::uint32_t asciiEnd = 0;
    bool isUsable = false;
};

/// Continues behind what ICU cannot convert, as if it were not there.
void Skip(const void* /*context*/, UConverterFromUnicodeArgs* /*run*/, const char16_t* /*units*/, std::int32_t /*size*/,
          UChar32 /*scalar*/, UConverterCallbackReason reason, UErrorCode* error) {
    if (reason <= UCNV_IRREGULAR) {
        *error = U_ZERO_ERROR;
    }
}

/// All units that ICU converts to the encoding, one by one; none where it converts sequences of several.
std::u16string ConvertibleUnits(UConverter* converter) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<USet, void (*)(USet*)> set(uset_openEmpty(), uset_close);
    if (set == nullptr) {
        throw std::bad_alloc();
    }
    ucnv_getUnicodeSet(converter, set.get(), UCNV_ROUNDTRIP_SET, &error);
    std::u16string units;
    for (std::int32_t i = 0; i < uset_getItemCount(set.get()); ++i) {
        UChar32 first = 0;
        UChar32 last = 0;
        if (uset_getItem(set.get(), i, &first, &last, nullptr, 0, &error) != 0) {
            return {};
        }
        for (UChar32 scalar = first; scalar <= std::min<UChar32>(last, 0xFFFE); ++scalar) {
            if ((scalar & 0xF800) != 0xD800) {
                units += static_cast<char16_t>(scalar);
            }
        }
    }
    return U_SUCCESS(Checked(error)) != 0 ? units : std::u16string();
}

/// Asks ICU for the code of each unit, and for the unit of each code of one byte or two.
void Fill(Tables& tables, UConverter* converter) {
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter, Skip, nullptr, nullptr, nullptr, &error);
    ucnv_setToUCallBack(converter, IcuToUtf16::Stop, nullptr, nullptr, nullptr, &error);
    const std::u16string units = ConvertibleUnits(converter);
    std::string codes(units.size() * 4 + 64, '\0');
    std::vector<std::int32_t> unitOf(codes.size());
    const char16_t* from = units.data();
    char* to = codes.data();
    ucnv_fromUnicode(converter, &to, codes.data() + codes.size(), &from, units.data() + units.size(), unitOf.data(), 1,
                     &error);
    if (U_FAILURE(Checked(error)) != 0) {
        return;
    }
    const auto size = static_cast<std::size_t>(to - codes.data());
    for (std::size_t i = 0, next = 0; i != size; i = next) {
        next = i + 1;
        while (next != size && unitOf[next] == unitOf[i]) {
            ++next;
        }
        const auto byte = [&](std::size_t at) {
            return static_cast<std::uint32_t>(static_cast<unsigned char>(codes[at]));
        };
        const char16_t unit = units[static_cast<std::size_t>(unitOf[i])];
        std::array<char16_t, 8> back{};
        const char* code = &codes[i];
        char16_t* end = back.data();
        ucnv_resetToUnicode(converter);
        ucnv_toUnicode(converter, &end, back.data() + back.size(), &code, codes.data() + next, nullptr, 1, &error);
        if (U_FAILURE(Checked(error)) != 0 || next - i > 2 || end != back.data() + 1 || back[0] != unit) {
            error = U_ZERO_ERROR;
        } else if (next - i == 1) {
            tables.units.Set(byte(i), unit);
            tables.codes.Set(unit, byte(i));
        } else if (byte(i) != 0 && byte(i + 1) != 0) {
            tables.units.Set(byte(i) << 8 | byte(i + 1), unit);
            tables.codes.Set(unit, byte(i) << 8 | byte(i + 1));
            tables.isFirstOfTwo[byte(i)] = true;
        }
    }
    for (std::uint32_t c = 0; c < 0x80 && tables.units[c] == c && tables.codes[c] == c && !tables.isFirstOfTwo[c];) {
        tables.asciiEnd = ++c;
    }
    tables.isUsable = !units.empty();
}

/// Whether codes mean the same wherever they stand, and no byte is both a character and the first of two.
bool IsOfTheKind(const UConverter* converter) {
    const UConverterType type = ucnv_getType(converter);
    return type == UCNV_SBCS || type == UCNV_DBCS || type == UCNV_MBCS;
}

/// The tables of an encoding, made when they are first asked for and kept for the life of the process.
const Tables& TablesOf(std::string_view name) {
    struct Made {
        std::string_view name;
        Tables tables;
        Made* older;
    };
    static constinit std::atomic<Made*> newest{nullptr};
    for (const Made* made = newest.load(std::memory_order_acquire); made != nullptr; made = made->older) {
        if (made->name == name) {
            return made->tables;
        }
    }
    auto fresh = std::make_unique<Made>();
    fresh->name = name;
    UErrorCode error = U_ZERO_ERROR;
    const IcuHandle converter(ucnv_open(std::string(name).c_str(), &error));
    if (U_SUCCESS(Checked(error)) != 0 && IsOfTheKind(converter.get())) {
        Fill(fresh->tables, converter.get());
    }
    // Two threads may both have made them. Either copy is right, and the older stays unused.
    fresh->older = newest.load(std::memory_order_acquire);
    while (!newest.compare_exchange_weak(fresh->older, fresh.get(), std::memory_order_acq_rel)) {
    }
    return fresh.release()->tables;
}

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
    static OSStatus Run(const Tables& tables, Cursor& cursor) noexcept {
        for (;;) {
            if (cursor.Left() >= kBlock && *cursor.from < tables.asciiEnd) {
                SkimAscii(tables.asciiEnd, cursor);
            }
            // So many characters fit, whatever they are. The last byte by itself is looked at below.
            std::size_t count = std::min({cursor.Left() / 2, cursor.Space() / 2, kBlock});
            if (count == 0) {
                break;
            }
            Cursor at = cursor;
            for (; count != 0; --count) {
                const std::uint32_t byte = at.from[0];
                const bool isTwo = tables.isFirstOfTwo[byte];
                const std::uint32_t unit = isTwo ? tables.units(byte, at.from[1]) : tables.units(0, byte);
                if (unit == kNone) {
                    cursor = at;
                    return kNotInTable;
                }
                StoreUnit(at.to, unit);
                at.Advance(isTwo ? 2 : 1, 2);
            }
            cursor = at;
        }
        if (cursor.Left() == 0) {
            return noErr;
        }
        const std::uint32_t byte = *cursor.from;
        if (tables.isFirstOfTwo[byte] || tables.units(0, byte) == kNone || cursor.Left() > 1) {
            return kNotInTable;
        }
        if (cursor.Space() < 2) {
            return kTECOutputBufferFullStatus;
        }
        StoreUnit(cursor.to, tables.units(0, byte));
        cursor.Advance(1, 2);
        return noErr;
    }
};

/// For encodings of one byte a character: no branch depends on what a byte is.
struct SingleByteToUtf16 {
    static OSStatus Run(const Tables& tables, Cursor& cursor) noexcept {
        const std::uint16_t* const units = tables.units.Page0();
        while (cursor.Left() >= kBlock && cursor.Space() >= 2 * kBlock) {
            std::uint32_t isNone = 0;
#pragma GCC unroll 16
            for (std::size_t i = 0; i < kBlock; ++i) {
                const std::uint32_t unit = units[cursor.from[i]];
                isNone |= unit + 1;  // Only kNone reaches the seventeenth bit.
                StoreUnit(cursor.to + 2 * i, unit);
            }
            if (isNone > kNone) {
                break;
            }
            cursor.Advance(kBlock, 2 * kBlock);
        }
        return ToUtf16::Run(tables, cursor);
    }
};

struct FromUtf16 {
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
    static OSStatus Run(const Tables& tables, Cursor& cursor) noexcept {
        for (;;) {
            if (cursor.Left() >= 2 * kBlock && LoadUnit(cursor.from) < tables.asciiEnd) {
                SkimAscii(tables.asciiEnd, cursor);
            }
            std::size_t count = std::min({cursor.Left() / 2, cursor.Space() / 2, kBlock});
            if (count == 0) {
                break;
            }
            Cursor at = cursor;
            for (; count != 0; --count) {
                const std::uint32_t code = tables.codes[LoadUnit(at.from)];
                if (code == kNone) {
                    cursor = at;
                    return kNotInTable;
                }
                if (code > 0xFF) {
                    at.to[0] = static_cast<unsigned char>(code >> 8);
                    at.to[1] = static_cast<unsigned char>(code);
                    at.Advance(2, 2);
                } else {
                    *at.to = static_cast<unsigned char>(code);
                    at.Advance(2, 1);
                }
            }
            cursor = at;
        }
        return cursor.Left() == 0 ? OSStatus{noErr} : kNotInTable;
    }
};

/// Has no state between two calls, since neither the tables nor what is left to ICU has one.
template <class Direction>
class TableConverter final : public Converter {
public:
    TableConverter(const Tables& tables, std::string_view name, MakeIcuConverter makeIcu) noexcept
        : m_Tables(tables), m_Name(name), m_MakeIcu(makeIcu) {}

    Step Convert(Input input, Output output) override {
        Cursor cursor(input, output);
        for (std::size_t stretch = kShortest;; stretch = std::min(2 * stretch, kLongest)) {
            const unsigned char* const start = cursor.from;
            const OSStatus status = Direction::Run(m_Tables, cursor);
            if (status != kNotInTable) {
                return cursor.Stop(status, input, output);
            }
            if (cursor.from - start > static_cast<std::ptrdiff_t>(stretch)) {
                stretch = kShortest;
            }
            const std::size_t size = std::min(stretch, cursor.Left());
            const bool isAll = size == cursor.Left();
            const Step step = LeaveToIcu({cursor.from, size}, {cursor.to, cursor.Space()});
            cursor.Advance(step.read, step.written);
            // A stretch may end within a character, if it ends before the text.
            const bool goesOn = step.status == noErr || (step.status == kTECPartialCharErr && !isAll);
            if (!goesOn || cursor.Left() == 0) {
                return cursor.Stop(step.status, input, output);
            }
        }
    }
    Step Flush(Output /*output*/) override { return {noErr, 0, 0}; }
    void Clear() override {}

private:
    Step LeaveToIcu(Input input, Output output) {
        if (m_Icu == nullptr) {
            m_Icu = m_MakeIcu(m_Name);
            if (m_Icu == nullptr) {
                throw std::bad_alloc();  // The tables came from one like it.
            }
        }
        const Step step = m_Icu->Convert(input, output);
        m_Icu->Clear();
        return step;
    }

    static constexpr std::size_t kShortest = 32;
    static constexpr std::size_t kLongest = 4096;

    const Tables& m_Tables;
    std::string_view m_Name;
    MakeIcuConverter m_MakeIcu;
    std::unique_ptr<Converter> m_Icu;  ///< Null until it is needed.
};

template <class SingleByte, class Any>
std::unique_ptr<Converter> Make(std::string_view name, MakeIcuConverter makeIcu) {
    const Tables& tables = TablesOf(name);
    if (!tables.isUsable) {
        return makeIcu(name);
    }
    const auto& firsts = tables.isFirstOfTwo;
    if (std::find(firsts.begin(), firsts.end(), true) == firsts.end()) {
        return std::make_unique<TableConverter<SingleByte>>(tables, name, makeIcu);
    }
    return std::make_unique<TableConverter<Any>>(tables, name, makeIcu);
}

}  // namespace

std::unique_ptr<Converter> MakeTableToUtf16(std::string_view name, MakeIcuConverter makeIcu) {
    return Make<SingleByteToUtf16, ToUtf16>(name, makeIcu);
}

std::unique_ptr<Converter> MakeTableFromUtf16(std::string_view name, MakeIcuConverter makeIcu) {
    return Make<FromUtf16, FromUtf16>(name, makeIcu);
}

}  // namespace Lum::Internal::TextConversion
