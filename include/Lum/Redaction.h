// Texts for a log: URIs without their passwords.
//
//     Lum::Redacted("ftp://me:secret@h/x")                          ftp://me@h/x
//     Lum::Redacted("http://h/?token=secret&a=1#b", {"token"})      http://h/?token=&a=1#b
//
// A log holds what went wrong, too: texts that are no URI, or that other programs read in another way. So this
// works on any text, and in doubt leaves out more. Left out are
//
// - behind every "//" of the text, also of one in a query, what stands between the next ":" and the last "@" before the
//   next "/": the password after RFC 3986, and the one that URI::GetPassword gives; where that "/" comes first and what
//   follows the ":" is neither a port nor part of an IPv6 literal, all up to the last "@" of the text;
// - of a non-hierarchical URI such as "http:me:secret@h", what stands between the first ":" behind the scheme and the
//   last "@";
// - of a text that is not valid, all between the first ":" behind its "//", or its first ":" if it has none, and the
//   last "@";
// - the values of the keys that are named, in queries and fragments: up to the next "&", or to the last "#" of the
// text.
//
// What is not seen: a password whose "//", ":" or "@" is escaped, one of the user name alone ("http://token@h"), and
// one of only digits before a "/" ("http://me:12/3@h", which reads as a host and its port).
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/Export.h>
#include <Lum/URI.h>

namespace Lum {

namespace Internal {
/// Redacted, of a text.
LUM_API std::string RedactedText(std::string_view text, const std::vector<std::string_view>& keys);
}  // namespace Internal

/// A text without passwords and without the values of `keys`, which are compared unescaped and without ASCII case.
/// Any bytes are accepted; linear in the length of the text times the number of keys.
[[nodiscard]] inline std::string Redacted(std::string_view text, const std::vector<std::string_view>& keys = {}) {
    return Internal::RedactedText(text, keys);
}
/// The same of the text that ToString(false) gives.
template <std::derived_from<URI> AnyURI>
[[nodiscard]] std::string Redacted(const AnyURI& uri, const std::vector<std::string_view>& keys = {}) {
    return Internal::RedactedText(uri.ToString(false), keys);
}

}  // namespace Lum
