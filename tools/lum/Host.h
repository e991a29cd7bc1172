// What the tool asks of the operating system beyond the C library: a terminal's width, and a file's content
// replaced. A file for each kind of system answers.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace Tool {

/// How many columns standard output has if it is a terminal: what COLUMNS says, otherwise what the terminal does. 0
/// where there is no limit.
std::size_t TerminalColumns();

/// Whether both are one file on the disk, so that what is read would be what is written.
bool IsSameFile(int descriptor, int other);

/// Holds what several runs of the tool must not do at once in the folder of a file; each waits for the one before.
class FolderLock {
public:
    explicit FolderLock(const std::string& file);
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock();

private:
    int m_Folder = -1;
};

/// The new content of a file. It is written beside the file and takes its place as a whole, so that there is the old
/// content or the new one at any moment, whatever ends the program. Of several at a time one gets the file. Every
/// operation throws std::runtime_error with the file's name where it fails, and the file is then as it was.
class FileReplacement {
public:
    /// Of a regular file, or of the one that a symbolic link leads to.
    explicit FileReplacement(const std::string& file);
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    ~FileReplacement();

    /// The path of the file itself.
    [[nodiscard]] const std::string& File() const { return m_File; }
    /// Whether the file has other names. They keep the old content.
    [[nodiscard]] bool HasOtherNames() const;
    void Write(std::string_view bytes);
    /// Gives the new content the mode and the owner of the old one, brings it to the disk and puts it in its place.
    /// Refuses to where the file has been changed in the meantime.
    void Finish();

private:
    struct State;
    [[noreturn]] void Fail(const std::string& what, int error) const;

    std::string m_File;
    std::string m_Beside;  ///< Where the new content is; "" if there is none.
    std::unique_ptr<State> m_State;
};

}  // namespace Tool
