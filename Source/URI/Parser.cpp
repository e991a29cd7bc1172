// Fills the record from a text and decides whether what it holds is well formed.
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/Base/Ascii.h"
#include "Source/Base/ByteSearch.h"
#include "Source/URI/CommonForm.h"
#include "Source/URI/Cutter.h"
#include "Source/URI/Escaping.h"
#include "Source/URI/Scheme.h"

namespace Lum {
namespace {

/// Assigns a piece of the text, touching a component that is and stays empty as little as possible.
void Store(std::string& component, std::string_view piece) {
    if (!piece.empty()) {
        component.assign(piece.data(), piece.size());
    } else if (!component.empty()) {
        component.clear();
    }
}

/// Whether `path` begins with "/", a letter and ":".
bool StartsWithDrive(std::string_view path) {
    return path.size() > 2 && path[2] == ':' && path[0] == '/' && IsAsciiLetter(path[1]);
}

void StoreLower(std::string& component, std::string_view piece, bool hasUpper) {
    Store(component, piece);
    if (hasUpper) {
        URI::MakeLower(component);
    }
}

}  // namespace

bool URI::ParseURI(const std::string& text) {
    const std::less_equal<> notAfter;
    const bool isOwnComponent = notAfter(&m_Scheme, &text) && notAfter(&text, &m_NonHierarchical);
    return isOwnComponent ? ParseText(std::string(text)) : ParseText(text);
}

bool URI::ParseText(std::string_view text) {
    const CommonForm form = FindCommonForm(text);
    if (!form.isCommon) {
        return ParseUncommon(text);
    }
    try {
        StoreLower(m_Scheme, text.substr(0, form.schemeEnd), form.schemeHasUpper);
        const std::string_view authority = text.substr(form.authorityStart, form.pathStart - form.authorityStart);
        if (form.authorityHasDividers) {
            StoreAuthority(CutAuthority(authority));
        } else {
            StoreLower(m_Authority, authority, form.authorityHasUpper);
            Store(m_ServerPort, {});
            Store(m_Username, {});
            Store(m_Password, {});
        }
        const std::string_view rest = text.substr(form.pathStart);
        bool hasBackslash = false;
        if (form.restHasTails) {
            const PathAndTails cuts = CutTails(rest);
            hasBackslash = cuts.hasBackslash;
            StorePath(cuts);
        } else {
            Store(m_Path, rest);
            Store(m_Query, {});
            Store(m_Fragment, {});
        }
        Store(m_NonHierarchical, {});
        return Conclude(true, form.hasScheme, form.schemeIsLetters, hasBackslash);
    } catch (...) {
        Initialize();
        throw;
    }
}

bool URI::ParseUncommon(std::string_view text) {
    const Cuts cuts = Cut(text);
    try {
        StoreLower(m_Scheme, cuts.scheme, cuts.schemeHasUpper);
        StoreAuthority(cuts.authority);
        StorePath(cuts.rest);
        Store(m_NonHierarchical, {});
        if (!cuts.isHierarchical) {
            m_NonHierarchical.swap(m_Path);
        }
        return Conclude(cuts.isHierarchical, cuts.hasScheme, cuts.schemeIsLetters, cuts.rest.hasBackslash);
    } catch (...) {
        Initialize();
        throw;
    }
}

void URI::StoreAuthority(const Authority& cuts) {
    StoreLower(m_Authority, cuts.host, cuts.hostHasUpper);
    if (cuts.hostNeedsBrackets) {
        m_Authority.insert(0, 1, '[').push_back(']');
    }
    Store(m_ServerPort, cuts.port);
    Store(m_Username, cuts.username);
    Store(m_Password, cuts.password);
    if (HasMember(m_Password, kModifiedExcluded)) {
        m_Password = FastEscapeChars(UnescapeText(std::move(m_Password)), kModifiedExcluded);
    }
}

void URI::StorePath(const PathAndTails& cuts) {
    Store(m_Path, cuts.path);
    Store(m_Query, cuts.query);
    Store(m_Fragment, cuts.fragment);
}

bool URI::Conclude(bool isHierarchical, bool hasScheme, bool schemeIsLetters, bool hasBackslash) {
    m_IsHierarchical = isHierarchical;
    m_IsRelative = !hasScheme;
    if (isHierarchical && StartsWithDrive(m_Path) && m_Scheme == kFileScheme) {
        m_Path[2] = '|';
    }
    m_IsValid = IsWellFormed(schemeIsLetters, hasBackslash);
    if (!m_IsValid) {
        Initialize();
    }
    CheckInvariants();
    return m_IsValid;
}

bool URI::ValidateURI() const {
    return IsWellFormed(IsAsciiLetters(m_Scheme),
                        FindFirst(m_IsHierarchical ? m_Path : m_NonHierarchical, '\\') != std::string_view::npos);
}

bool URI::IsWellFormed(bool schemeIsLetters, bool hasBackslash) const {
    // One letter is refused on purpose: "c:/dir" is a local path, not a URI.
    if (IsAbsolute() && (m_Scheme.size() < 2 || !schemeIsLetters)) {
        return false;
    }
    if (hasBackslash) {
        return false;
    }
    return !m_IsHierarchical || IsRelative() || m_Scheme != kUnknownScheme;
}

std::string URI::GetDefaultPort() const { return std::string(DefaultPortOf(m_Scheme)); }

}  // namespace Lum
