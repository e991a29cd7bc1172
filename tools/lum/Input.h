// A file, or standard input, in whatever pieces it comes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

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
    /// Not so for a pipe or a terminal.
    [[nodiscard]] bool CanBeReadAgain() const { return m_Start >= 0; }
    /// How many line feeds are among the first `size` bytes that were read. Reading goes on behind them.
    std::uint64_t CountLineFeedsAgain(std::uint64_t size);

private:
    [[noreturn]] void Fail(const char* what) const;

    const std::string m_Name;
    const int m_Descriptor;
    const std::int64_t m_Start;  ///< The first byte's place in the file, or -1.
};

[[nodiscard]] std::uint64_t CountLineFeeds(std::string_view text);

}  // namespace Tool
