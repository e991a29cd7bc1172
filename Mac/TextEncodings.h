// The host's text encodings: their numbers, their Internet names, and the system's own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Mac {

/// What the host's services call an encoding that they do not know.
inline constexpr std::uint32_t kUnknownEncoding = 0xFFFF;

[[nodiscard]] std::uint32_t UTF8Encoding() noexcept;
[[nodiscard]] std::uint32_t UTF16Encoding() noexcept;  ///< In the host's byte order.
[[nodiscard]] std::uint32_t UTF7Encoding() noexcept;

/// The encoding of an Internet name, of which the first 255 bytes count; kUnknownEncoding if none.
[[nodiscard]] std::uint32_t EncodingOfInternetName(std::string_view name) noexcept;
/// The name of an encoding; "" if it has none.
[[nodiscard]] std::string InternetNameOf(std::uint32_t encoding);

struct NamedEncoding {
    std::uint32_t encoding;
    std::string_view names;  ///< The preferred name and then the aliases, with a space between two.
};
/// Every encoding that has a name, by number.
[[nodiscard]] std::vector<NamedEncoding> NamedEncodings();

/// The encoding of the system's script; UTF-8 where the host cannot tell.
[[nodiscard]] std::uint32_t SystemScriptEncoding() noexcept;
/// Whether the host takes text in this encoding for Japanese.
[[nodiscard]] bool IsJapanese(std::uint32_t encoding) noexcept;

}  // namespace Mac
