// The setters and getters of single components.
//
// Compatibility: each setter escapes in its own way, and only some update the flags. Applications build a URI by
// calling several setters, and the last of those that decide its form must decide the flags.
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Transcoder.h>
#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/URI/Authority.h"
#include "Source/URI/Escaping.h"
#include "Source/URI/Record.h"
#include "Source/URI/Scheme.h"

namespace Lum {

using namespace Internal;

void URI::SetScheme(StringProxy scheme) {
    m_Scheme = FastEscapeChars(std::move(scheme.m_Text), URIexcludedBitMap);
    MakeLower(m_Scheme);
}

void URI::SetUsername(StringProxy username) {
    m_Username = FastEscapeChars(std::move(username.m_Text), ModifiedURIEXcludedBitMap);
}

void URI::SetPassword(StringProxy password) {
    m_Password = FastEscapeChars(std::move(password.m_Text), ModifiedURIEXcludedBitMap);
}

void URI::SetAuthority(StringProxy host) {
    std::string& text = host.m_Text;
    MakeLower(text);
    if (!IsIPv6Literal(text)) {
        text = FastEscapeChars(std::move(text), ModifiedURIEXcludedBitMap);
    } else if (text.size() >= 3 && text.front() != '[') {
        text.insert(0, 1, '[').push_back(']');
    }
    m_Authority = std::move(text);
    SetHierState(true);
}

void URI::SetServerPort(StringProxy port) {
    m_ServerPort = FastEscapeChars(std::move(port.m_Text), URIexcludedBitMap);
    SetHierState(true);
}

void URI::SetPath(StringProxy path) {
    // "/C|" is how a drive is written in a "file" path; escaping would hide its bar.
    const std::string_view text = path.m_Text;
    const bool startsWithDrive = text.size() >= 4 && text[2] == '|' && IsOfType(kFileScheme);
    if (startsWithDrive) {
        m_Path = std::string(text.substr(0, 3)) + FastEscapeChars(text.substr(3), URIexcludedBitMap);
    } else {
        m_Path = FastEscapeChars(std::move(path.m_Text), URIexcludedBitMap);
    }
    Access::PathChanged(*this);
}

void URI::Access::PathChanged(URI& uri) {
    if (uri.m_Scheme == kUnknownScheme) {
        uri.m_Scheme.clear();
    }
    uri.SetHierState(true);
}

void URI::SetQuery(StringProxy query, bool escape) {
    m_Query = escape ? FastEscapeChars(std::move(query.m_Text), URIexcludedBitMap) : std::move(query.m_Text);
}

void URI::SetFragment(StringProxy fragment) {
    m_Fragment = FastEscapeChars(std::move(fragment.m_Text), URIexcludedBitMap);
}

void URI::SetNonHierarchical(StringProxy part) {
    m_NonHierarchical = FastEscapeChars(std::move(part.m_Text), URInonhierexcludedBitMap);
    SetHierState(false);
}

void URI::SetParts(StringProxy scheme, StringProxy host, StringProxy port, StringProxy path, StringProxy query,
                   StringProxy fragment) {
    SetScheme(std::move(scheme));
    SetAuthority(std::move(host));
    SetServerPort(std::move(port));
    SetPath(std::move(path));
    SetQuery(std::move(query), true);
    SetFragment(std::move(fragment));
    SetHierState(true);
}

bool URI::IsOfType(StringProxy scheme) const { return EqualIgnoringAsciiCase(m_Scheme, scheme.m_Text); }

std::string URI::GetScheme() const { return UnescapeText(m_Scheme); }
std::string URI::GetUsername() const { return UnescapeText(m_Username); }
std::string URI::GetPassword() const { return UnescapeText(m_Password); }

std::string URI::GetAuthority() const {
    const std::string_view host = m_Authority;
    if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
        return std::string(host.substr(1, host.size() - 2));
    }
    return UnescapeText(host);
}

std::string URI::GetServerPort() const { return UnescapeText(m_ServerPort); }
std::string URI::GetPath() const { return UnescapeText(m_Path); }
std::string URI::GetQuery(bool unescape) const { return unescape ? UnescapeText(m_Query) : m_Query; }
std::string URI::GetFragment() const { return UnescapeText(m_Fragment); }
std::string URI::GetNonHierarchical() const { return UnescapeText(m_NonHierarchical); }

void URI::GetParts(StringRefProxy scheme, StringRefProxy host, StringRefProxy port, StringRefProxy path,
                   StringRefProxy query, StringRefProxy fragment) const {
    scheme = GetScheme();
    host = GetAuthority();
    port = GetServerPort();
    path = GetPath();
    query = GetQuery(true);
    fragment = GetFragment();
}

void URI::StringRefProxy::operator=(const std::string& text) {
    if (m_Selector == 0) {
        *m_Narrow = text;
    } else {
        *m_Wide = Transcoder::asUTF16(text);
    }
}

}  // namespace Lum
