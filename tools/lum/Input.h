// A file, or standard input, in whatever pieces it comes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace Tool {

/// Closed at the end. Throws std::runtime_error with the file's name where it cannot be opened or read.
class Input {
public:
    /// "-" is standard input.
    explicit Input(const std::string& file);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input();

    [[nodiscard]] bool IsTerminal() const;
    /// Whether what is read is the file that standard output goes to: it would never end.
    [[nodiscard]] bool IsOutput() const;
    /// "standard input", or the file's name in quotes.
    [[nodiscard]] const std::string& Name() const { return m_Name; }
    /// How many bytes came, which may be fewer than the block has room for; 0 at the end.
    std::size_t Read(std::span<char> block);
    /// How many line feeds are among the first `size` bytes that were read; nothing where the input cannot be read
    /// twice. Reading goes on behind them.
    std::optional<std::uint64_t> CountLineFeeds(std::uint64_t size);

private:
    [[noreturn]] void Fail(const char* what) const;

    const std::string m_Name;
    const int m_Descriptor;
};

}  // namespace Tool
