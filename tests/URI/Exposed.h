// A URI whose stored components and flags a test can read and compare with the plain splitter.
#pragma once

#include <string>

#include <Lum/URI.h>
#include <Lum/URISplitter.h>

class Exposed : public Lum::URI {
public:
    using URI::operator=;
    using URI::m_Authority;
    using URI::m_Fragment;
    using URI::m_IsHierarchical;
    using URI::m_IsRelative;
    using URI::m_IsValid;
    using URI::m_NonHierarchical;
    using URI::m_Password;
    using URI::m_Path;
    using URI::m_Query;
    using URI::m_Scheme;
    using URI::m_ServerPort;
    using URI::m_Username;
    using URI::URI;

    /// Every component and flag in one line: "scheme|user|password|host|port|path|query|fragment|
    /// nonHierarchical|" and a letter for each flag that is set (v, r, h).
    [[nodiscard]] std::string Record() const {
        std::string record;
        for (const std::string* component : {&m_Scheme, &m_Username, &m_Password, &m_Authority, &m_ServerPort, &m_Path,
                                             &m_Query, &m_Fragment, &m_NonHierarchical}) {
            record += *component + '|';
        }
        return record + (m_IsValid ? "v" : "") + (m_IsRelative ? "r" : "") + (m_IsHierarchical ? "h" : "");
    }

    /// Whether a valid URI holds the pieces of `text`. Of an authority only one that is a mere host is compared.
    [[nodiscard]] bool HoldsPiecesOf(const std::string& text) const {
        const Lum::Internal::URIPieces pieces = Lum::Internal::SplitURI(text);
        std::string scheme(pieces.scheme), authority(pieces.authority), path(pieces.path);
        MakeLower(scheme);
        MakeLower(authority);
        const bool startsWithDrive =
            path.size() > 2 && path[0] == '/' && VerifyAlpha(path.substr(1, 1)) && path[2] == ':';
        if (pieces.isHierarchical && scheme == "file" && startsWithDrive) {
            path[2] = '|';
        }
        const bool isHost = authority.find_first_of(":@[") == std::string::npos;
        return m_Scheme == scheme && (!isHost || m_Authority == authority) && m_Query == pieces.query &&
               m_Fragment == pieces.fragment && m_Path == (pieces.isHierarchical ? path : "") &&
               m_NonHierarchical == (pieces.isHierarchical ? "" : path) && m_IsRelative != pieces.hasScheme &&
               m_IsHierarchical == pieces.isHierarchical;
    }
};

inline constexpr const char* kEmptyState = "unknown|||||||||";
