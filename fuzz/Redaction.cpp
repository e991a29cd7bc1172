// Property: whatever stands around it, a secret that is a password or the value of a named key is not in the redacted
// text; what is printed without one is a part of the text; and a valid URI without a secret stays valid.
#include <string>
#include <string_view>

#include <Lum/Redaction.h>
#include <Lum/URI.h>

#include "fuzz/Fuzz.h"

namespace {

constexpr std::string_view kSecret = "S3cr3t";

bool ShowsSecret(const std::string& text) { return text.find(kSecret) != std::string::npos; }

/// Whether `part` is what is left of `whole` where some of its bytes are taken out.
bool IsLeftOf(const std::string& part, const std::string& whole) {
    std::size_t at = 0;
    for (std::size_t i = 0; i < whole.size() && at < part.size(); ++i) {
        at += whole[i] == part[at] ? 1 : 0;
    }
    return at == part.size();
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (ShowsSecret(text)) {
        return 0;
    }
    const std::string secret(kSecret);
    const std::string before = text.substr(0, size / 2), after = text.substr(size / 2);
    const std::string word = text.substr(size / 3, 6);
    for (const std::string& place : {"//u:" + secret + "@", "//u:p/" + secret + "@", "http://u:" + secret + ":@"}) {
        Require(!ShowsSecret(Lum::Redacted(before + place + after)));
    }
    for (const char* delimiter : {"?", "&", "#"}) {
        for (const char* key : {"token=", "TOKEN=", "t%6Fken="}) {
            Require(!ShowsSecret(Lum::Redacted(before + delimiter + key + secret + "&" + after, {"x", "token"})));
        }
    }
    Lum::URI uri("http://h/");
    uri.SetQuery(text, false);
    uri.SetPath(text);
    uri.SetUsername("u" + word);
    uri.SetPassword(word + secret + word);
    uri.SetQueryValue("a&b", word + secret);
    const std::string redacted = Lum::Redacted(uri, {"a&b"});
    Require(!ShowsSecret(redacted) && IsLeftOf(redacted, uri.ToString(false)));
    Require(Lum::URI(redacted).GetPassword().empty());
    Require(IsLeftOf(Lum::Redacted(text), text));
    Require(Lum::URI(Lum::Redacted(text)).GetPassword().empty() || !Lum::URI(text).IsValidURI());
    return 0;
}
