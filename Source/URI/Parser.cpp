// Fills the record from a text and decides whether what it holds is well formed.
#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/Base/ByteSearch.h"
#include "Source/URI/Escaping.h"
#include "Source/URI/FastSplitter.h"
#include "Source/URI/Record.h"
#include "Source/URI/Scheme.h"

namespace Lum {

using namespace Internal;

namespace {

bool HasUpper(std::string_view text) noexcept { return std::any_of(text.begin(), text.end(), IsAsciiUpper); }

void StoreLower(std::string& component, std::string_view piece, bool hasUpper) {
    Store(component, piece);
    if (hasUpper) {
        URI::MakeLower(component);
    }
}

bool HasBackslash(std::string_view text) noexcept { return FindFirst(text, '\\') != std::string_view::npos; }

/// Whether `path` begins with "/", a letter and ":".
bool StartsWithDrive(std::string_view path) {
    return path.size() > 2 && path[2] == ':' && path[0] == '/' && IsAsciiLetter(path[1]);
}

}  // namespace

bool URI::ParseURI(const std::string& text) {
    const std::less_equal<> notAfter;
    const bool isOwnComponent = notAfter(&m_Scheme, &text) && notAfter(&text, &m_NonHierarchical);
    return isOwnComponent ? Access::Parse(*this, std::string(text)) : Access::Parse(*this, text);
}

bool URI::Access::Parse(URI& uri, std::string_view text) {
    const CommonForm form = FindCommonForm(text);
    if (!form.isCommon) {
        return ParseUncommon(uri, text);
    }
    try {
        StoreLower(uri.m_Scheme, text.substr(0, form.schemeEnd), form.schemeHasUpper);
        const std::string_view authority = text.substr(form.authorityStart, form.pathStart - form.authorityStart);
        if (form.authorityHasDelimiters) {
            StoreAuthority(uri, SplitAuthority(authority));
        } else {
            StoreLower(uri.m_Authority, authority, form.authorityHasUpper);
            Store(uri.m_ServerPort, {});
            Store(uri.m_Username, {});
            Store(uri.m_Password, {});
        }
        const std::string_view rest = text.substr(form.pathStart);
        bool hasBackslash = false;
        if (form.restHasDelimiters) {
            URIPieces pieces;
            SplitRest<BlockSearch>(rest, pieces);
            hasBackslash = HasBackslash(pieces.path);
            StoreRest(uri, pieces);
        } else {
            Store(uri.m_Path, rest);
            Store(uri.m_Query, {});
            Store(uri.m_Fragment, {});
            Store(uri.m_NonHierarchical, {});
        }
        return SetParsedFlags(uri, true, form.hasScheme, form.schemeIsLetters, hasBackslash);
    } catch (...) {
        uri.Initialize();
        throw;
    }
}

bool URI::Access::ParseUncommon(URI& uri, std::string_view text) {
    const URIPieces pieces = SplitURI<BlockSearch>(text);
    try {
        StoreLower(uri.m_Scheme, pieces.scheme, HasUpper(pieces.scheme));
        StoreAuthority(uri, SplitAuthority(pieces.authority));
        StoreRest(uri, pieces);
        return SetParsedFlags(uri, pieces.isHierarchical, pieces.hasScheme, IsAsciiLetters(pieces.scheme),
                              HasBackslash(pieces.path));
    } catch (...) {
        uri.Initialize();
        throw;
    }
}

void URI::Access::StoreAuthority(URI& uri, const Authority& authority) {
    StoreLower(uri.m_Authority, authority.host, HasUpper(authority.host));
    if (authority.hostNeedsBrackets) {
        uri.m_Authority.insert(0, 1, '[').push_back(']');
    }
    Store(uri.m_ServerPort, authority.port);
    Store(uri.m_Username, authority.username);
    Store(uri.m_Password, authority.password);
    if (HasMember(uri.m_Password, ModifiedURIEXcludedBitMap)) {
        uri.m_Password = UnescapeText(std::move(uri.m_Password));
        EscapeInPlace(uri.m_Password, ModifiedURIEXcludedBitMap);
    }
}

void URI::Access::StoreRest(URI& uri, const URIPieces& pieces) {
    Store(uri.m_Path, pieces.isHierarchical ? pieces.path : std::string_view{});
    Store(uri.m_NonHierarchical, pieces.isHierarchical ? std::string_view{} : pieces.path);
    Store(uri.m_Query, pieces.query);
    Store(uri.m_Fragment, pieces.fragment);
}

bool URI::Access::SetParsedFlags(URI& uri, bool isHierarchical, bool hasScheme, bool schemeIsLetters,
                                 bool hasBackslash) {
    uri.m_IsHierarchical = isHierarchical;
    uri.m_IsRelative = !hasScheme;
    if (isHierarchical && StartsWithDrive(uri.m_Path) && uri.m_Scheme == kFileScheme) {
        uri.m_Path[2] = '|';
    }
    // The questions below are virtual. An override that reads the valid flag must not see that of an earlier text.
    uri.m_IsValid = false;
    uri.m_IsValid = IsWellFormed(uri, schemeIsLetters, hasBackslash);
    if (!uri.m_IsValid) {
        uri.Initialize();
    }
    CheckInvariants(uri);
    return uri.m_IsValid;
}

bool URI::ValidateURI() const {
    return Access::IsWellFormed(*this, IsAsciiLetters(m_Scheme),
                                HasBackslash(m_IsHierarchical ? m_Path : m_NonHierarchical));
}

bool URI::Access::IsWellFormed(const URI& uri, bool schemeIsLetters, bool hasBackslash) {
    // Compatibility: a scheme of one letter is refused, for callers tell "c:/dir" from a URI by the answer.
    if (uri.IsAbsolute() && (uri.m_Scheme.size() < 2 || !schemeIsLetters)) {
        return false;
    }
    if (hasBackslash) {
        return false;
    }
    return !uri.m_IsHierarchical || uri.IsRelative() || uri.m_Scheme != kUnknownScheme;
}

std::string URI::GetDefaultPort() const { return std::string(DefaultPortOf(m_Scheme)); }

}  // namespace Lum
