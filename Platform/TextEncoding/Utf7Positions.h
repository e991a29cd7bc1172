// Where the characters of a text in UTF-7 (RFC 2152) begin and end. ICU reports positions only within the
// input of one call; this class follows a text through any number of calls.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Lum::Internal::TextConversion {

class Utf7Positions {
public:
    /// Reads the byte at `position`, which must not be malformed. If the byte completes a unit, returns where
    /// that unit begins.
    std::optional<std::uint64_t> Read(unsigned char byte, std::uint64_t position) {
        const std::uint64_t begin = m_End;
        const int value = m_IsBase64 ? Base64Value(byte) : -1;
        if (value >= 0) {
            return ReadBase64(static_cast<unsigned>(value), position);
        }
        m_End = position + 1;
        if (!m_IsBase64 && byte == '+') {
            m_IsBase64 = true;
            m_IsFirst = true;
            m_Count = 0;
            return std::nullopt;
        }
        const bool isUnit = !m_IsBase64 || byte != '-' || m_IsFirst;
        m_IsBase64 = false;
        return isUnit ? std::optional(byte == '-' ? begin : position) : std::nullopt;
    }
    static bool IsBase64(unsigned char byte) noexcept { return Base64Value(byte) >= 0; }
    /// The last position at which the text may end: an incomplete or bad element begins there.
    [[nodiscard]] std::uint64_t End() const noexcept { return m_End; }

private:
    static int Base64Value(unsigned char byte) noexcept { return kBase64Values[byte]; }

    static constexpr std::array<std::int8_t, 256> kBase64Values = [] {
        std::array<std::int8_t, 256> values{};
        values.fill(-1);
        std::int8_t value = 0;
        for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")) {
            values[static_cast<unsigned char>(c)] = value++;
        }
        return values;
    }();

    /// Eight characters hold three units, which the third, the sixth and the eighth complete. The rest of such
    /// a character's bits begin the next unit; if they are 0, the text may end there.
    std::optional<std::uint64_t> ReadBase64(unsigned value, std::uint64_t position) {
        m_IsFirst = false;
        m_Count = (m_Count + 1) % 8;
        if (m_Count != 3 && m_Count != 6 && m_Count != 0) {
            return std::nullopt;
        }
        const std::uint64_t begin = m_End;
        const unsigned rest = m_Count == 3 ? value & 3 : m_Count == 6 ? value & 15 : 0;
        m_End = rest == 0 ? position + 1 : position;
        return begin;
    }

    std::uint64_t m_End = 0;
    unsigned m_Count = 0;  ///< Characters of base64 so far, modulo 8.
    bool m_IsBase64 = false;
    bool m_IsFirst = false;  ///< Directly after the "+".
};

}  // namespace Lum::Internal::TextConversion
