// The setters and getters of single components.
//
// Each setter escapes in its own way and only some bring the flags up to date. These differences are
// wanted: an application builds a URI by calling several, and the flags must follow the last of
// those that decide its form.
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Transcoder.h>
#include <Lum/URI.h>

#include "Source/URI/Escaping.h"
#include "Source/URI/HostText.h"
#include "Source/URI/Scheme.h"

namespace Lum {

void URI::SetScheme(StringProxy scheme) {
    m_Scheme = FastEscapeChars(std::move(scheme.m_Text), kExcluded);
    MakeLower(m_Scheme);
}

void URI::SetUsername(StringProxy username) {
    m_Username = FastEscapeChars(std::move(username.m_Text), kModifiedExcluded);
}

void URI::SetPassword(StringProxy password) {
    m_Password = FastEscapeChars(std::move(password.m_Text), kModifiedExcluded);
}

void URI::SetAuthority(StringProxy host) {
    std::string& text = host.m_Text;
    MakeLower(text);
    if (!IsIPv6Literal(text)) {
        text = FastEscapeChars(std::move(text), kModifiedExcluded);
    } else if (text.size() >= 3 && text.front() != '[') {
        text.insert(0, 1, '[').push_back(']');
    }
    m_Authority = std::move(text);
    SetHierState(true);
}

void URI::SetServerPort(StringProxy port) {
    m_ServerPort = FastEscapeChars(std::move(port.m_Text), kExcluded);
    SetHierState(true);
}

void URI::SetPath(StringProxy path) {
    // "/C|" is how a drive is written in a "file" path; escaping would hide its bar.
    const std::string_view text = path.m_Text;
    const bool startsWithDrive = text.size() >= 4 && text[2] == '|' && IsOfType(kFileScheme);
    if (startsWithDrive) {
        m_Path = std::string(text.substr(0, 3)) + FastEscapeChars(text.substr(3), kExcluded);
    } else {
        m_Path = FastEscapeChars(std::move(path.m_Text), kExcluded);
    }
    AcceptPath();
}

void URI::AcceptPath() {
    if (m_Scheme == kUnknownScheme) {
        m_Scheme.clear();
    }
    SetHierState(true);
}

void URI::SetQuery(StringProxy query, bool escape) {
    m_Query = escape ? FastEscapeChars(std::move(query.m_Text), kExcluded) : std::move(query.m_Text);
}

void URI::SetFragment(StringProxy fragment) { m_Fragment = FastEscapeChars(std::move(fragment.m_Text), kExcluded); }

void URI::SetNonHierarchical(StringProxy part) {
    m_NonHierarchical = FastEscapeChars(std::move(part.m_Text), kNonhierExcluded);
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
