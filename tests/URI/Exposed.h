// A URI whose stored components and flags a test can read.
#pragma once

#include <ostream>
#include <string>

#include <Lum/URI.h>

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
};

inline constexpr const char* kEmptyState = "unknown|||||||||";
