// The host's text encodings: their numbers, their Internet names, and the encoding of the system.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <Lum/Transcoder.h>

namespace Lum::Internal::Mac {

/// The number that the host's services give for an unknown encoding.
inline constexpr TextEncoding kUnknownEncoding = 0xFFFF;

[[nodiscard]] TextEncoding UTF8Encoding() noexcept;
[[nodiscard]] TextEncoding UTF16Encoding() noexcept;  ///< In the host's byte order.
/// UTF16Encoding() for the UTF-16 whose name says the host's byte order; any other encoding as it is.
[[nodiscard]] TextEncoding WithoutHostOrder(TextEncoding encoding) noexcept;
[[nodiscard]] TextEncoding UTF7Encoding() noexcept;

/// The encoding with an Internet name, of which only the first 255 bytes are used; kUnknownEncoding if there is
/// none.
[[nodiscard]] TextEncoding EncodingOfInternetName(std::string_view name) noexcept;
/// The name of an encoding; "" if it has none.
[[nodiscard]] std::string InternetNameOf(TextEncoding encoding);

struct NamedEncoding {
    TextEncoding encoding;
    std::string_view names;  ///< The preferred name and then the aliases, separated by spaces.
};
/// Every encoding that has a name, in the order of their numbers.
[[nodiscard]] std::vector<NamedEncoding> NamedEncodings();

/// The encoding of the system's script; UTF-8 where the host does not know it.
[[nodiscard]] TextEncoding SystemScriptEncoding();
/// Whether the language of this encoding is Japanese.
[[nodiscard]] bool IsJapanese(TextEncoding encoding) noexcept;

}  // namespace Lum::Internal::Mac
