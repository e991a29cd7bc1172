// The components of a URI by name, as stored and as they read, in their one order.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include <Lum/URI.h>

namespace Tool {

/// A component's name in the output, its text in the URI, and the operation that reads it unescaped.
struct Component {
    std::string_view name;
    std::string_view stored;
    std::string (*get)(const Lum::URI& uri);

    /// What it is called in a sentence.
    [[nodiscard]] std::string_view Title() const { return name == "nonHierarchical" ? "non-hierarchical" : name; }
};

/// A URI whose stored components can be read.
class ParsedURI : public Lum::URI {
public:
    using URI::URI;

    [[nodiscard]] std::array<Component, 9> Components() const {
        return {{{"scheme", m_Scheme, [](const URI& uri) { return uri.GetScheme(); }},
                 {"user", m_Username, [](const URI& uri) { return uri.GetUsername(); }},
                 {"password", m_Password, [](const URI& uri) { return uri.GetPassword(); }},
                 {"host", m_Authority, [](const URI& uri) { return uri.GetAuthority(); }},
                 {"port", m_ServerPort, [](const URI& uri) { return uri.GetServerPort(); }},
                 {"path", m_Path, [](const URI& uri) { return uri.GetPath(); }},
                 {"query", m_Query, [](const URI& uri) { return uri.GetQuery(true); }},
                 {"fragment", m_Fragment, [](const URI& uri) { return uri.GetFragment(); }},
                 {"nonHierarchical", m_NonHierarchical, [](const URI& uri) { return uri.GetNonHierarchical(); }}}};
    }
    /// A component as it reads, or as stored if `isRaw`; "" of a URI that is not valid.
    [[nodiscard]] std::string Read(std::size_t index, bool isRaw) const {
        const Component component = Components().at(index);
        return !IsValidURI() ? "" : (isRaw ? std::string(component.stored) : component.get(*this));
    }
};

/// The index of a component by its name in the output or in a sentence, or as many as there are.
inline std::size_t IndexOfComponent(std::string_view name) {
    const auto components = ParsedURI().Components();
    std::size_t index = 0;
    while (index < components.size() && components.at(index).name != name && components.at(index).Title() != name) {
        ++index;
    }
    return index;
}

}  // namespace Tool
