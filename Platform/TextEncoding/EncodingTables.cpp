// How the tables are filled, and where they are kept.
#include "Platform/TextEncoding/EncodingTables.h"

#include <unicode/uset.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "Platform/TextEncoding/IcuDirections.h"

namespace Lum::Internal::TextConversion {

namespace {

/// All units that ICU converts to the encoding, one by one; none where it converts sequences of several.
std::u16string ConvertibleUnits(const UConverter* converter) {
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

/// All units that ICU makes of one byte or two, and some of them twice.
std::u16string UnitsOfShortCodes(UConverter* converter, UErrorCode& error) {
    std::array<UBool, 256> isFirst{};
    ucnv_getStarters(converter, isFirst.data(), &error);
    std::string codes;
    for (std::size_t first = 0; first < isFirst.size(); ++first) {
        // A line feed ends what may be no code.
        codes.append({static_cast<char>(first), '\n'});
        for (int second = 0; isFirst[first] != 0 && second < 256; ++second) {
            codes.append({static_cast<char>(first), static_cast<char>(second), '\n'});
        }
    }
    std::u16string units(codes.size(), u'\0');
    const char* from = codes.data();
    char16_t* to = units.data();
    ucnv_toUnicode(converter, &to, to + units.size(), &from, from + codes.size(), nullptr, 1, &error);
    units.resize(static_cast<std::size_t>(to - units.data()));
    std::erase(units, u'\n');
    return units + u'\n';
}

constexpr std::size_t kStretch = 512;
constexpr std::size_t kLongestCode = 8;

/// Asks ICU for the codes of at most kStretch units, and for the units of those codes that have one byte or two.
void AddUnits(Tables& tables, UConverter* converter, std::u16string_view units, UErrorCode& error) {
    std::array<char, kStretch * kLongestCode> codes;
    std::array<std::int32_t, codes.size()> unitOf;
    const char16_t* fromUnit = units.data();
    char* code = codes.data();
    ucnv_fromUnicode(converter, &code, codes.data() + codes.size(), &fromUnit, units.data() + units.size(),
                     unitOf.data(), 1, &error);
    const auto size = static_cast<std::size_t>(code - codes.data());

    // The codes that a table can hold, one behind the other, and what they should become.
    std::array<char, 2 * kStretch> row;
    std::array<std::int32_t, kStretch + 1> begins;
    std::array<char16_t, kStretch> expected;
    std::size_t count = 0;
    std::size_t rowSize = 0;
    for (std::size_t i = 0, next = 0; i != size; i = next) {
        next = i + 1;
        while (next != size && unitOf[next] == unitOf[i]) {
            ++next;
        }
        if (next - i == 1 || (next - i == 2 && codes[i] != 0 && codes[i + 1] != 0)) {
            begins[count] = static_cast<std::int32_t>(rowSize);
            expected[count++] = units[static_cast<std::size_t>(unitOf[i])];
            rowSize = static_cast<std::size_t>(std::copy(&codes[i], &codes[next], &row[rowSize]) - row.data());
        }
    }
    begins[count] = static_cast<std::int32_t>(rowSize);

    std::array<char16_t, 2 * kStretch> back;
    std::array<std::int32_t, back.size()> codeOf;
    const char* fromCode = row.data();
    char16_t* unit = back.data();
    ucnv_toUnicode(converter, &unit, back.data() + back.size(), &fromCode, row.data() + rowSize, codeOf.data(), 1,
                   &error);
    const auto backSize = static_cast<std::size_t>(unit - back.data());
    for (std::size_t i = 0, k = 0; i != count && U_SUCCESS(error) != 0; ++i) {
        while (k != backSize && codeOf[k] < begins[i]) {
            ++k;
        }
        const bool isOne =
            k != backSize && codeOf[k] == begins[i] && (k + 1 == backSize || codeOf[k + 1] >= begins[i + 1]);
        if (!isOne || back[k] != expected[i]) {
            continue;
        }
        const auto at = static_cast<std::size_t>(begins[i]);
        const std::uint32_t first = static_cast<unsigned char>(row[at]);
        if (begins[i + 1] - begins[i] == 1) {
            tables.singles[first] = expected[i];
            tables.codes.Set(expected[i], first);
        } else {
            const std::uint32_t second = static_cast<unsigned char>(row[at + 1]);
            tables.pairs.Set(first << 8 | second, expected[i]);
            tables.codes.Set(expected[i], second << 8 | first);
            tables.isFirstOfTwo[first] = tables.hasTwo = true;
        }
    }
}

/// From this many units on, most have long codes, and it is faster to ask for the units of the short ones.
constexpr std::size_t kMostShortCodes = 0xC000;

void Fill(Tables& tables, UConverter* converter) {
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_SKIP, nullptr, nullptr, nullptr, &error);
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_SKIP, nullptr, nullptr, nullptr, &error);
    std::u16string all = ConvertibleUnits(converter);
    if (all.size() > kMostShortCodes) {
        all = UnitsOfShortCodes(converter, error);
    }
    for (std::u16string_view units = all; !units.empty(); units.remove_prefix(std::min(units.size(), kStretch))) {
        AddUnits(tables, converter, units.substr(0, kStretch), error);
    }
    for (std::uint32_t c = 0; c < 0x80 && tables.singles[c] == c && tables.codes[c] == c && !tables.isFirstOfTwo[c];) {
        tables.asciiEnd = ++c;
    }
    tables.isUsable = !all.empty() && U_SUCCESS(Checked(error)) != 0;
}

/// Whether codes mean the same wherever they stand, and no byte is both a character and the first of two.
bool IsOfTheKind(const UConverter* converter) {
    const UConverterType type = ucnv_getType(converter);
    return type == UCNV_SBCS || type == UCNV_DBCS || type == UCNV_MBCS;
}

IcuHandle Open(std::string_view name) {
    UErrorCode error = U_ZERO_ERROR;
    IcuHandle converter(ucnv_open(std::string(name).c_str(), &error));
    Checked(error);
    return converter;
}

}  // namespace

TabledEncoding* TabledEncoding::Find(std::string_view name) {
    static constinit std::array<std::atomic<TabledEncoding*>, 64> lists{};
    std::atomic<TabledEncoding*>& list = lists[std::hash<std::string_view>()(name) % lists.size()];
    std::unique_ptr<TabledEncoding> fresh;
    for (TabledEncoding* newest = list.load(std::memory_order_acquire);;) {
        for (TabledEncoding* encoding = newest; encoding != nullptr; encoding = encoding->m_Older) {
            if (encoding->m_Name == name) {
                return encoding->m_IsOfTheKind ? encoding : nullptr;
            }
        }
        if (fresh == nullptr) {
            fresh.reset(new TabledEncoding(name));
            const IcuHandle converter = Open(name);
            fresh->m_IsOfTheKind = converter != nullptr && IsOfTheKind(converter.get());
        }
        fresh->m_Older = newest;
        // Another thread may have added the same name, so the list is searched again where it has changed.
        if (list.compare_exchange_strong(newest, fresh.get(), std::memory_order_acq_rel)) {
            static_cast<void>(fresh.release());
            newest = list.load(std::memory_order_acquire);
        }
    }
}

const Tables& TabledEncoding::GetTables() {
    const Tables* tables = m_Tables.load(std::memory_order_acquire);
    if (tables == nullptr) {
        auto fresh = std::make_unique<Tables>();
        if (const IcuHandle converter = Open(m_Name)) {
            Fill(*fresh, converter.get());
        }
        // Two threads may both have made them. Either are right, and those that come later are thrown away.
        if (m_Tables.compare_exchange_strong(tables, fresh.get(), std::memory_order_acq_rel)) {
            tables = fresh.release();
        }
    }
    return *tables;
}

}  // namespace Lum::Internal::TextConversion
