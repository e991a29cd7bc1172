// A component read unescaped, without a copy where it holds no escape.
#pragma once

#include <string>
#include <string_view>

#include "Source/Base/ByteSearch.h"
#include "Source/URI/Escaping.h"

namespace Lum {

/// The stored text must stay as it is as long as the view is used.
class UnescapedView {
public:
    explicit UnescapedView(std::string_view stored)
        : m_HasEscapes(FindFirst(stored, '%') != std::string_view::npos), m_Stored(stored) {
        if (m_HasEscapes) {
            m_Text = UnescapeText(stored);
        }
    }
    [[nodiscard]] std::string_view Get() const noexcept { return m_HasEscapes ? std::string_view(m_Text) : m_Stored; }

private:
    bool m_HasEscapes;
    std::string_view m_Stored;
    std::string m_Text;
};

}  // namespace Lum
