// What the library's own code may do with a URI's components and flags beyond the public operations.
//
// The components are listed here once. Each operation is defined in the file named above it.
#pragma once

#include <string_view>
#include <tuple>

#include <Lum/URI.h>
#include <Lum/URISplitter.h>

#include "Source/URI/Authority.h"

namespace Lum {

struct URI::Access {
    template <class AnyURI>
    static auto Components(AnyURI& uri) noexcept {
        return std::tie(uri.m_Scheme, uri.m_Authority, uri.m_ServerPort, uri.m_Path, uri.m_Query, uri.m_Fragment,
                        uri.m_Username, uri.m_Password, uri.m_NonHierarchical);
    }
    template <class AnyURI>
    static auto Flags(AnyURI& uri) noexcept {
        return std::tie(uri.m_IsValid, uri.m_IsRelative, uri.m_IsHierarchical);
    }

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

    // Relations.cpp
    static bool HaveSameAuthority(const URI& a, const URI& b);
    static bool AreComparable(const URI& a, const URI& b) noexcept;
    static RelationCode Relate(const URI& a, const URI& b, bool caseSensitive);
    static void ReduceToCommonParent(URI& uri, const URI& other, bool caseSensitive);
};

}  // namespace Lum
