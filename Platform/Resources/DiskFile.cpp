// A file is replaced by another beside it, on disk before it takes the old one's name.
#include "Platform/Resources/DiskFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>

namespace Resources {
namespace {

/// Offsets are 64 bits wide where the host's own are.
bool IsOffset(std::uint64_t offset) { return static_cast<std::uint64_t>(static_cast<off_t>(offset)) == offset; }

class OwnedDescriptor {
public:
    explicit OwnedDescriptor(int descriptor) noexcept : m_Descriptor(descriptor) {}
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
    ~OwnedDescriptor() { Close(); }

    [[nodiscard]] int Get() const noexcept { return m_Descriptor; }
    bool Close() noexcept {
        const int descriptor = m_Descriptor;
        m_Descriptor = -1;
        return descriptor < 0 || close(descriptor) == 0;
    }

private:
    int m_Descriptor;
};

/// A new file in a folder, its path in `path`; -1 if none can be made. A process that was killed may have
/// left names behind, so several are tried.
int CreateBeside(const std::filesystem::path& folder, std::string& path) {
    for (unsigned attempt = 0; attempt < 1000; ++attempt) {
        path = (folder / (".lum-" + std::to_string(getpid()) + '-' + std::to_string(attempt) + ".new")).string();
        const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST) {
            return descriptor;
        }
    }
    return -1;
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written == 0 || (written < 0 && errno != EINTR)) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

void FlushFolder(const std::filesystem::path& folder) {
    // The new name is in place by now. Some file systems cannot flush a folder, and lose nothing by it.
    const OwnedDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    fsync(descriptor.Get());
}

}  // namespace

InputFile::InputFile(const std::filesystem::path& path) noexcept
    // Without O_NONBLOCK a pipe would wait for a writer.
    : m_Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    struct stat status {};
    if (m_Descriptor >= 0 && (fstat(m_Descriptor, &status) != 0 || !S_ISREG(status.st_mode))) {
        close(m_Descriptor);
        m_Descriptor = -1;
    }
    m_Size = static_cast<std::uint64_t>(status.st_size);
}

InputFile::~InputFile() {
    if (IsOpen()) {
        close(m_Descriptor);
    }
}

bool InputFile::Read(std::uint64_t offset, std::size_t size, char* bytes) const noexcept {
    while (size > 0) {
        if (!IsOffset(offset)) {
            return false;
        }
        const ssize_t got = pread(m_Descriptor, bytes, size, static_cast<off_t>(offset));
        if (got == 0 || (got < 0 && errno != EINTR)) {
            return false;
        }
        const auto advance = static_cast<std::size_t>(std::max<ssize_t>(got, 0));
        offset += advance;
        bytes += advance;
        size -= advance;
    }
    return true;
}

bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes) {
    const std::filesystem::path folder = path.parent_path();
    std::string newPath;
    OwnedDescriptor file(CreateBeside(folder, newPath));
    if (file.Get() < 0) {
        return false;
    }
    struct stat old {};
    const bool isReplaced = stat(path.c_str(), &old) == 0;
    // The owner first: changing it may take permissions away. A file of another owner stays replaceable.
    const bool isOwned = !isReplaced || fchown(file.Get(), old.st_uid, old.st_gid) == 0 || errno == EPERM;
    if (!isOwned || (isReplaced && fchmod(file.Get(), old.st_mode & 0777U) != 0) || !WriteAll(file.Get(), bytes) ||
        fsync(file.Get()) != 0 || !file.Close() || std::rename(newPath.c_str(), path.c_str()) != 0) {
        unlink(newPath.c_str());
        return false;
    }
    FlushFolder(folder);
    return true;
}

}  // namespace Resources
