// Leaves passwords and the values of some keys out of a text, whether it is a URI or not.
#include <Lum/Redaction.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/URIProblem.h>
#include <Lum/URISplitter.h>

#include "Source/Base/Ascii.h"

namespace Lum::Internal {

namespace {

constexpr std::size_t npos = std::string_view::npos;

/// Whether what follows the ":" of "host:" can be a port, or the host an IPv6 literal with or without a port.
bool IsHostAndPort(std::string_view authority, std::size_t colon) {
    constexpr std::string_view digits = "0123456789";
    const std::string_view rest = authority.substr(colon + 1);
    const bool isPort = rest.substr(0, rest.find_first_of("?#")).find_first_not_of(digits) == npos;
    const std::size_t afterLiteral = authority.starts_with('[') ? authority.find(']') : npos;
    return isPort || (afterLiteral != npos && colon < afterLiteral) ||
           (rest.find(':') != npos && authority.find_first_not_of("0123456789abcdefABCDEF:.") == npos);
}

/// Appends `text` to `out` without what stands between its position `colon` and its last "@", if that follows.
void AppendWithout(std::string& out, std::string_view text, std::size_t colon) {
    const std::size_t at = text.rfind('@');
    const bool isThere = colon != npos && at != npos && colon < at;
    out += text.substr(0, isThere ? colon : npos);
    out += isThere ? text.substr(at) : std::string_view();
}

std::string WithoutPasswordsBehindSlashes(std::string_view text) {
    std::string out;
    for (;;) {
        std::size_t start = text.find("//");
        if (start == npos) {
            return out.append(text);
        }
        start = std::min(text.find_first_not_of('/', start), text.size());
        out += text.substr(0, start);
        text.remove_prefix(start);
        const std::string_view authority = text.substr(0, text.find('/'));
        const std::size_t colon = authority.find(':');
        if (colon != npos && authority.find('@', colon) == npos && !IsHostAndPort(authority, colon)) {
            AppendWithout(out, text, colon);
            return out;
        }
        AppendWithout(out, authority, colon);
        text.remove_prefix(authority.size());
    }
}

std::string WithoutPasswords(std::string_view text) {
    const URIPieces pieces = SplitURI(text);
    if (ExplainURI(text).code != URIProblemCode::kValid) {
        const std::size_t slashes = text.find(kAuthorityStart);
        std::string out;
        AppendWithout(out, text, text.find(':', slashes == npos ? 0 : slashes));
        return out;
    }
    if (pieces.isHierarchical) {
        return WithoutPasswordsBehindSlashes(text);
    }
    std::string out;
    AppendWithout(out, text, text.find(':', pieces.scheme.size() + 1));
    return WithoutPasswordsBehindSlashes(out);
}

bool IsOneOf(std::string_view key, const std::vector<std::string_view>& keys) {
    const std::string read = URI::QueryUnescape(key);
    return std::any_of(keys.begin(), keys.end(),
                       [&](std::string_view wanted) { return EqualIgnoringAsciiCase(read, wanted); });
}

}  // namespace

std::string RedactedText(std::string_view text, const std::vector<std::string_view>& keys) {
    std::string withKeys = WithoutPasswords(text);
    if (keys.empty()) {
        return withKeys;
    }
    std::string out;
    const std::string_view all = withKeys;
    const std::size_t fragment = std::min(all.rfind('#'), all.size());
    std::string_view rest = all;
    for (;;) {
        // A key begins behind a delimiter, and ends where the next one, or its value, begins.
        const std::size_t end = rest.find_first_of("?&#;=");
        if (end == npos) {
            return out.append(rest);
        }
        const std::string_view key = rest.substr(0, end);
        out += rest.substr(0, end + 1);
        const bool isNamed = rest[end] == '=' && IsOneOf(key, keys);
        rest.remove_prefix(end + 1);
        if (isNamed) {
            const std::size_t start = all.size() - rest.size();
            rest = all.substr(std::min(all.find('&', start), start <= fragment ? fragment : all.size()));
        }
    }
}

}  // namespace Lum::Internal
