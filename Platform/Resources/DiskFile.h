// Plain files: read at any place, and replaced as a whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

namespace Resources {

/// A file open for reading; only regular files can be opened.
class InputFile {
public:
    explicit InputFile(const std::filesystem::path& path) noexcept;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    [[nodiscard]] bool IsOpen() const noexcept { return m_Descriptor >= 0; }
    /// The size when it was opened.
    [[nodiscard]] std::uint64_t Size() const noexcept { return m_Size; }
    /// False if not all `size` bytes at `offset` could be read.
    bool Read(std::uint64_t offset, std::size_t size, char* bytes) const noexcept;

private:
    int m_Descriptor;
    std::uint64_t m_Size = 0;
};

/// Replaces or makes a file: whoever reads it, now or after a crash, sees the old bytes or the new ones,
/// whole. Keeps the old one's permissions. False, with the old file untouched, if that fails.
bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace Resources
