// The object behind a lum_uri, for the files that share it: a URI whose stored components can be read.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include <Lum/URI.h>

namespace Lum::Internal {

class ReadableURI : public URI {
public:
    /// How a component is reached, in the order of enum lum_component.
    struct Component {
        std::string URI::*stored;
        std::string (*get)(const URI& uri);
        void (*set)(URI& uri, StringProxy text);
    };
    [[nodiscard]] static const std::array<Component, 9>& Components() noexcept;

    [[nodiscard]] const std::string& Stored(const Component& component) const noexcept {
        return this->*component.stored;
    }
    [[nodiscard]] const std::string& StoredQuery() const noexcept { return m_Query; }
};

}  // namespace Lum::Internal

struct lum_uri {
    Lum::Internal::ReadableURI uri;
};
