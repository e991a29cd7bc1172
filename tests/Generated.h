// Inputs made up by rule: every short text, random texts, and texts in blocks of their exact size.
#pragma once

#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>

namespace Generated {

/// Calls `use` with every text of at most `longest` characters of `alphabet`.
inline void EveryText(std::string_view alphabet, std::size_t longest,
                      const std::function<void(const std::string&)>& use) {
    std::string text;
    const std::function<void()> extend = [&] {
        use(text);
        if (text.size() < longest) {
            for (const char c : alphabet) {
                text.push_back(c);
                extend();
                text.pop_back();
            }
        }
    };
    extend();
}

/// A text of at most `longest` characters of `alphabet`.
inline std::string Text(std::mt19937& random, std::string_view alphabet, std::size_t longest) {
    std::string text(random() % (longest + 1), '\0');
    for (char& c : text) {
        c = alphabet[random() % alphabet.size()];
    }
    return text;
}

/// All 256 bytes.
inline std::string EveryByte() {
    std::string bytes(256, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(i));
    }
    return bytes;
}

/// A copy of a text in a heap block of its exact size, so that a sanitizer sees one byte too far.
class Exact {
public:
    explicit Exact(std::string_view text) : m_Bytes(new char[text.size()]), m_Size(text.size()) {
        std::memcpy(m_Bytes.get(), text.data(), text.size());
    }
    [[nodiscard]] std::string_view View() const { return {m_Bytes.get(), m_Size}; }

private:
    std::unique_ptr<char[]> m_Bytes;
    std::size_t m_Size;
};

}  // namespace Generated
