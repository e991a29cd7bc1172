// The record's life: construction, copies, the empty state, the flags and what holds between them.
#include "Source/URI/Record.h"

#include <cassert>
#include <string>
#include <tuple>
#include <utility>

#include <Lum/URI.h>

#include "Source/URI/Scheme.h"

namespace Lum {

using namespace Internal;

URIResolver::~URIResolver() = default;

URI::URI() : m_Scheme(kUnknownScheme), m_IsValid(false), m_IsRelative(false), m_IsHierarchical(false) {}

URI::URI(StringProxy text) : URI() { Access::Parse(*this, text.m_Text); }

URI::URI(const char* text) : URI() { Access::Parse(*this, text == nullptr ? "" : text); }

URI::URI(const URI& other) = default;

URI::URI(URI&& other) noexcept : URI() { *this = std::move(other); }

URI::~URI() = default;

URI& URI::operator=(const URI& other) {
    CopyURI(other);
    return *this;
}

URI& URI::operator=(URI&& other) noexcept {
    if (this != &other) {
        for (const auto component : Access::kComponents) {
            this->*component = std::move(other.*component);
        }
        Access::Flags(*this) = Access::Flags(other);
        other.Initialize();
    }
    return *this;
}

URI& URI::operator=(StringProxy text) {
    Access::Parse(*this, text.m_Text);
    return *this;
}

URI& URI::operator=(const char* text) {
    // Copied first: the text may be part of one of this object's components.
    return *this = StringProxy(text);
}

bool URI::ConstructURI(const std::string& text) { return ParseURI(text); }

void URI::CopyURI(const URI& other) {
    if (this == &other) {
        return;
    }
    try {
        for (const auto component : Access::kComponents) {
            Store(this->*component, other.*component);
        }
    } catch (...) {
        Initialize();
        throw;
    }
    Access::Flags(*this) = Access::Flags(other);
    Access::CheckInvariants(*this);
}

void URI::Initialize() noexcept {
    for (const auto component : Access::kComponents) {
        (this->*component).clear();
    }
    // Fits the storage that every string has, so that nothing is allocated.
    m_Scheme = kUnknownScheme;
    Access::Flags(*this) = std::tuple(false, false, false);
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
    Access::CheckInvariants(*this);
}

bool URI::IsValidURI() const { return m_IsValid; }
bool URI::IsAbsolute() const { return !m_IsRelative; }
bool URI::IsRelative() const { return m_IsRelative; }
bool URI::IsHierarchical() const { return m_IsHierarchical; }

void URI::Access::CheckInvariants([[maybe_unused]] const URI& uri) noexcept {
    // A user name or password may be set ahead of the host that makes the URI hierarchical; all
    // other components belong to one form only.
    assert(uri.m_IsHierarchical ? uri.m_NonHierarchical.empty()
                                : uri.m_Authority.empty() && uri.m_ServerPort.empty() && uri.m_Path.empty());
    assert(!uri.m_IsRelative || uri.m_IsHierarchical);
}

URIResolver* URI::m_Resolver = nullptr;

URIResolver* URI::SetResolver(URIResolver* resolver) { return std::exchange(m_Resolver, resolver); }

URI URI::Resolve(const URI& uri) {
    URIResolver* const resolver = m_Resolver;
    return resolver == nullptr ? uri : resolver->Resolve(uri);
}

}  // namespace Lum
