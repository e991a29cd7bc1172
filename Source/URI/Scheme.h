// The schemes that the URI model itself knows.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace Lum::Internal {

/// The scheme of the empty state. A valid hierarchical absolute URI does not have it.
inline constexpr std::string_view kUnknownScheme = "unknown";
/// Its URIs print "//" even without a host, and keep "/C|" in their paths.
inline constexpr std::string_view kFileScheme = "file";

struct DefaultPort {
    std::string_view scheme;
    std::string_view port;
};

inline constexpr std::array<DefaultPort, 4> kDefaultPorts{{
    {"http", "80"},
    {"ftp", "21"},
    {"file", ""},
    {"sftp", "22"},
}};

constexpr std::string_view DefaultPortOf(std::string_view scheme) noexcept {
    const auto* const found =
        std::find_if(kDefaultPorts.begin(), kDefaultPorts.end(), [&](const auto& row) { return row.scheme == scheme; });
    return found == kDefaultPorts.end() ? std::string_view{} : found->port;
}

}  // namespace Lum::Internal
