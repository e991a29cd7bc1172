// Splits an authority into user name, password, host and port, and tells what an IPv6 literal is.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include <Lum/URISplitter.h>

#include "Source/Base/ByteSearch.h"

namespace Lum::Internal {

/// Searches in blocks of sixteen bytes.
struct BlockSearch {
    static std::size_t First(std::string_view text, char wanted) noexcept { return FindFirst(text, wanted); }
    static std::size_t Last(std::string_view text, char wanted) noexcept { return FindLast(text, wanted); }
};

/// The pieces of an authority. They are views of it.
struct Authority {
    std::string_view username;
    std::string_view password;
    std::string_view host;
    std::string_view port;
    bool hostNeedsBrackets = false;  ///< An IPv6 literal without the brackets that it is stored with.
};

/// Whether a host is an IPv6 literal: in square brackets ("[]" counts), or with two or more ":". A port may
/// still be attached.
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

/// Splits what follows the user information.
inline void SplitHost(std::string_view text, Authority& pieces) noexcept {
    pieces.host = text;
    if (!IsIPv6Literal(text)) {
        pieces.port = SplitTail<BlockSearch>(pieces.host, kPortStart);
        return;
    }
    if (text.front() == '[') {
        if (const std::size_t end = text.find("]:"); end != std::string_view::npos) {
            pieces.host = text.substr(0, end + 1);
            pieces.port = text.substr(end + 2);
        }
        return;
    }
    pieces.hostNeedsBrackets = true;
    // An address has at most seven colons. With eight, the last one begins the port if a number follows it.
    const std::size_t last = FindLast(text, ':');
    if (std::count(text.begin(), text.end(), ':') == 8 && IsDecimalToTheEnd(text.substr(last + 1))) {
        pieces.host = text.substr(0, last);
        pieces.port = text.substr(last + 1);
    }
}

inline Authority SplitAuthority(std::string_view text) noexcept {
    Authority pieces;
    if (const std::size_t at = Find<BlockSearch>(text, kUserInfoEnd); at != std::string_view::npos) {
        pieces.username = text.substr(0, at);
        pieces.password = SplitTail<BlockSearch>(pieces.username, kPasswordStart);
        text.remove_prefix(at + 1);
    }
    SplitHost(text, pieces);
    return pieces;
}

}  // namespace Lum::Internal
