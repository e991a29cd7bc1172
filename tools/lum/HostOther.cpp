// Systems without POSIX: tables as wide as they are, and no file replaced.
#include <stdexcept>

#include "tools/lum/Host.h"

namespace Tool {

std::size_t TerminalColumns() { return 0; }

bool IsSameFile(int /*descriptor*/, int /*other*/) { return false; }

FolderLock::FolderLock(const std::string& /*file*/) {}
FolderLock::~FolderLock() = default;

struct FileReplacement::State {};

FileReplacement::FileReplacement(const std::string& file) : m_File(file) {
    Fail("cannot be converted in place here:", 0);
}
FileReplacement::~FileReplacement() = default;
bool FileReplacement::HasOtherNames() const { return false; }
void FileReplacement::Write(std::string_view /*bytes*/) {}
void FileReplacement::Finish() {}
void FileReplacement::Fail(const std::string& what, int /*error*/) const {
    throw std::runtime_error(what + " \"" + m_File + '"');
}

}  // namespace Tool
