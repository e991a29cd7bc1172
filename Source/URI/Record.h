// What the library's own code may do with a URI's components and flags beyond the public operations.
//
// The components are listed here once. Each operation is defined in the file named above it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <typeinfo>

#include <Lum/URI.h>
#include <Lum/URISplitter.h>

#include "Source/URI/Authority.h"

namespace Lum {

namespace Internal {
enum class PrintedForm { NonHierarchical, Relative, WithoutAuthority, WithAuthority };

/// The components in the form in which they are to be printed.
struct PrintedParts {
    std::string_view scheme;
    std::string_view username;
    std::string_view password;
    std::string_view host;
    std::string_view port;
    std::string_view path;
    std::string_view query;
    std::string_view fragment;
    std::string_view nonHierarchical;
};

/// Assigns a piece of text, touching a component that is and stays empty as little as possible.
inline void Store(std::string& component, std::string_view piece) {
    if (!piece.empty()) {
        component.assign(piece.data(), piece.size());
    } else if (!component.empty()) {
        component.clear();
    }
}

}  // namespace Internal

struct URI::Access {
    static constexpr std::array<std::string URI::*, 9> kComponents{
        &URI::m_Scheme,   &URI::m_Authority, &URI::m_ServerPort, &URI::m_Path,           &URI::m_Query,
        &URI::m_Fragment, &URI::m_Username,  &URI::m_Password,   &URI::m_NonHierarchical};
    template <class AnyURI>
    static auto Flags(AnyURI& uri) noexcept {
        return std::tie(uri.m_IsValid, uri.m_IsRelative, uri.m_IsHierarchical);
    }

    /// Whether the object is of no derived class, which could override operations.
    static bool IsPlainURI(const URI& uri) noexcept { return typeid(uri) == typeid(URI); }

    // Record.cpp
    /// In debug builds, ends the program where components and flags contradict each other.
    static void CheckInvariants(const URI& uri) noexcept;

    // Parser.cpp
    /// As ParseURI, of a text that is not part of the URI.
    static bool Parse(URI& uri, std::string_view text);
    static bool ParseUncommon(URI& uri, std::string_view text);
    static void StoreAuthority(URI& uri, const Internal::Authority& authority);
    static void StoreRest(URI& uri, const Internal::URIPieces& pieces);
    /// Sets the flags of a URI whose components are stored. Leaves the empty state if it is not well formed.
    static bool SetParsedFlags(URI& uri, bool isHierarchical, bool hasScheme, bool schemeIsLetters, bool hasBackslash);
    static bool IsWellFormed(const URI& uri, bool schemeIsLetters, bool hasBackslash);

    // Components.cpp
    /// What follows every change of the path: the URI becomes hierarchical, and the mark of the empty state goes.
    static void PathChanged(URI& uri);

    // References.cpp
    /// Changes the path as the unescaped path of a relative reference asks for; it does not begin with "/".
    static void ApplyRelativePath(URI& uri, std::string_view reference);

    // Serialiser.cpp
    static Internal::PrintedForm FormOf(const URI& uri);
    static Internal::PrintedParts Stored(const URI& uri) noexcept;
    /// The size of what ToString(false) gives.
    static std::uint64_t PrintedSize(const URI& uri);
    static bool HaveSameComponents(const URI& a, const URI& b) noexcept;

    // Relations.cpp
    /// IsOfType(b.GetScheme()), which a derived class is asked.
    static bool HasSchemeOf(const URI& a, const URI& b);
    static bool HaveSameAuthority(const URI& a, const URI& b);
    static bool AreComparable(const URI& a, const URI& b) noexcept;
    static RelationCode Relate(const URI& a, const URI& b, bool caseSensitive);
    static void ReduceToCommonParent(URI& uri, const URI& other, bool caseSensitive);
};

}  // namespace Lum
