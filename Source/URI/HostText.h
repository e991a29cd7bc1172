// What a host text is: an IPv6 literal, with or without its brackets, or a name.
#pragma once

#include <string>
#include <string_view>

#include "Source/Base/ByteSearch.h"

namespace Lum {

/// In square brackets ("[]" counts), or with two or more ":". A port may still be attached.
inline bool IsIPv6Literal(std::string_view host) noexcept {
    if (!host.empty() && host.front() == '[' && host.back() == ']') {
        return true;
    }
    const std::size_t colon = FindFirst(host, ':');
    return colon != std::string_view::npos && FindFirst(host.substr(colon + 1), ':') != std::string_view::npos;
}

/// Whether strtol, base 10, would read `text` to its end: white space, a sign, digits. "" counts.
constexpr bool IsDecimalToTheEnd(std::string_view text) noexcept {
    if (text.empty()) {
        return true;
    }
    while (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r'))) {
        text.remove_prefix(1);
    }
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        text.remove_prefix(1);
    }
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace Lum
