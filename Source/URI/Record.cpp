// The record's life: construction, copies, the empty state, the flags and what holds between them.
#include <cassert>
#include <functional>
#include <string>
#include <utility>

#include <Lum/URI.h>

#include "Source/URI/Scheme.h"

namespace Lum {

URIResolver::~URIResolver() = default;

URI::URI() : m_Scheme(kUnknownScheme), m_IsValid(false), m_IsRelative(false), m_IsHierarchical(false) {}

URI::URI(StringProxy text) : URI() { ParseText(text.m_Text); }

URI::URI(const char* text) : URI() { ParseText(text == nullptr ? "" : text); }

URI::URI(const URI& other) = default;

URI::URI(URI&& other) noexcept
    : m_Scheme(std::move(other.m_Scheme)),
      m_Authority(std::move(other.m_Authority)),
      m_ServerPort(std::move(other.m_ServerPort)),
      m_Path(std::move(other.m_Path)),
      m_Query(std::move(other.m_Query)),
      m_Fragment(std::move(other.m_Fragment)),
      m_Username(std::move(other.m_Username)),
      m_Password(std::move(other.m_Password)),
      m_NonHierarchical(std::move(other.m_NonHierarchical)),
      m_IsValid(other.m_IsValid),
      m_IsRelative(other.m_IsRelative),
      m_IsHierarchical(other.m_IsHierarchical) {
    other.Initialize();
}

URI::~URI() = default;

URI& URI::operator=(const URI& other) {
    CopyURI(other);
    return *this;
}

URI& URI::operator=(URI&& other) noexcept {
    if (this != &other) {
        m_Scheme = std::move(other.m_Scheme);
        m_Authority = std::move(other.m_Authority);
        m_ServerPort = std::move(other.m_ServerPort);
        m_Path = std::move(other.m_Path);
        m_Query = std::move(other.m_Query);
        m_Fragment = std::move(other.m_Fragment);
        m_Username = std::move(other.m_Username);
        m_Password = std::move(other.m_Password);
        m_NonHierarchical = std::move(other.m_NonHierarchical);
        m_IsValid = other.m_IsValid;
        m_IsRelative = other.m_IsRelative;
        m_IsHierarchical = other.m_IsHierarchical;
        other.Initialize();
    }
    return *this;
}

URI& URI::operator=(StringProxy text) {
    ParseText(text.m_Text);
    return *this;
}

URI& URI::operator=(const char* text) {
    // Copied first: the text may stand in one of this object's components.
    return *this = StringProxy(text);
}

bool URI::ConstructURI(const std::string& text) { return ParseURI(text); }

void URI::CopyURI(const URI& other) {
    if (this == &other) {
        return;
    }
    try {
        m_Scheme = other.m_Scheme;
        m_Authority = other.m_Authority;
        m_ServerPort = other.m_ServerPort;
        m_Path = other.m_Path;
        m_Query = other.m_Query;
        m_Fragment = other.m_Fragment;
        m_Username = other.m_Username;
        m_Password = other.m_Password;
        m_NonHierarchical = other.m_NonHierarchical;
    } catch (...) {
        Initialize();
        throw;
    }
    m_IsValid = other.m_IsValid;
    m_IsRelative = other.m_IsRelative;
    m_IsHierarchical = other.m_IsHierarchical;
    CheckInvariants();
}

void URI::Initialize() noexcept {
    // Fits every string's storage, so that nothing is allocated.
    m_Scheme = kUnknownScheme;
    m_Authority.clear();
    m_ServerPort.clear();
    m_Path.clear();
    m_Query.clear();
    m_Fragment.clear();
    m_Username.clear();
    m_Password.clear();
    m_NonHierarchical.clear();
    m_IsValid = false;
    m_IsRelative = false;
    m_IsHierarchical = false;
}

void URI::SetHierState(bool hierarchical) {
    const bool hasNoScheme = m_Scheme.empty() || m_Scheme == kUnknownScheme;
    m_IsHierarchical = hierarchical;
    if (hierarchical) {
        m_NonHierarchical.clear();
        m_IsRelative = hasNoScheme;
        m_IsValid = !m_Authority.empty() || !m_Path.empty();
    } else {
        m_Authority.clear();
        m_Username.clear();
        m_Password.clear();
        m_ServerPort.clear();
        m_Path.clear();
        m_IsRelative = false;
        m_IsValid = !hasNoScheme;
    }
    CheckInvariants();
}

bool URI::IsValidURI() const { return m_IsValid; }
bool URI::IsAbsolute() const { return !m_IsRelative; }
bool URI::IsRelative() const { return m_IsRelative; }
bool URI::IsHierarchical() const { return m_IsHierarchical; }

void URI::CheckInvariants() const noexcept {
    // A user name or password may be set ahead of the host that makes the URI hierarchical; all
    // other components belong to one form only.
    assert(m_IsHierarchical ? m_NonHierarchical.empty()
                            : m_Authority.empty() && m_ServerPort.empty() && m_Path.empty());
    assert(!m_IsRelative || m_IsHierarchical);
}

URIResolver* URI::m_Resolver = nullptr;

URIResolver* URI::SetResolver(URIResolver* resolver) { return std::exchange(m_Resolver, resolver); }

URI URI::Resolve(const URI& uri) {
    URIResolver* const resolver = m_Resolver;
    return resolver == nullptr ? uri : resolver->Resolve(uri);
}

}  // namespace Lum
