// Files that are read at any offset and replaced as a whole, and operations on paths. Paths are strings here,
// because operations of std::filesystem::path are not safe when memory runs out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Lum::Internal::Host {

/// The path of a name in a folder.
std::string InFolder(std::string_view folder, std::string_view name);
/// The folder of a path; "." for a path of one name.
std::string FolderOf(std::string_view path);
/// The absolute path without links; nothing if the file does not exist or cannot be reached.
std::optional<std::string> RealPath(const std::string& path);

/// A file open for reading; only regular files can be opened.
class InputFile {
public:
    explicit InputFile(const std::string& path);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    [[nodiscard]] bool IsOpen() const noexcept { return m_Descriptor >= 0; }
    /// Whether anything with that path exists, even if it cannot be opened.
    [[nodiscard]] bool IsThere() const noexcept { return m_IsThere; }
    /// The size when it was opened.
    [[nodiscard]] std::uint64_t Size() const noexcept { return m_Size; }
    /// False if not all `size` bytes at `offset` could be read.
    bool Read(std::uint64_t offset, std::size_t size, char* bytes) const noexcept;

private:
    int m_Descriptor;
    bool m_IsThere = true;
    std::uint64_t m_Size = 0;
};

/// Replaces or makes a file. A reader gets either all old bytes or all new bytes, even after a crash. Keeps the
/// permissions of the old file. False, with the old file untouched, if that fails.
bool ReplaceFile(const std::string& path, std::string_view bytes);

}  // namespace Lum::Internal::Host
