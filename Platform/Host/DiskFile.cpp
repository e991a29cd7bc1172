// A file is replaced in three steps: a new file is made in the same folder, it is flushed to the disk, and it is
// renamed to the name of the old file.
#include "Platform/Host/DiskFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

using namespace Lum::Internal;

namespace Lum::Internal::Host {
namespace {

static_assert(sizeof(off_t) == 8, "files may have more than 2 GB (cmake/Library.cmake)");

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

/// Makes a new file in a folder and sets `path` to its path. -1 if it cannot be made. Several names are tried,
/// because a process that was killed may have left files.
int CreateBeside(const std::string& folder, std::string& path) {
    for (unsigned attempt = 0; attempt < 1000; ++attempt) {
        path = InFolder(folder, ".lum-" + std::to_string(getpid()) + '-' + std::to_string(attempt) + ".new");
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

void FlushFolder(const std::string& folder) {
    // The file has been renamed already. Some file systems cannot flush a folder and need no flush.
    const OwnedDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    fsync(descriptor.Get());
}

}  // namespace

std::string InFolder(std::string_view folder, std::string_view name) {
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path += folder;
    if (!folder.empty() && folder.back() != '/') {
        path += '/';
    }
    path += name;
    return path;
}

std::string FolderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? "." : std::string(path.substr(0, std::max<std::size_t>(slash, 1)));
}

std::optional<std::string> RealPath(const std::string& path) {
    char found[PATH_MAX];
    errno = 0;
    if (realpath(path.c_str(), found) != nullptr) {
        return found;
    }
    if (errno == ENOMEM) {
        throw std::bad_alloc();
    }
    return std::nullopt;
}

InputFile::InputFile(const std::string& path)
    // Without O_NONBLOCK a pipe would wait for a writer.
    : m_Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    if (m_Descriptor < 0 && errno == ENOMEM) {
        throw std::bad_alloc();
    }
    m_IsThere = m_Descriptor >= 0 || (errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG);
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

bool ReplaceFile(const std::string& path, std::string_view bytes) {
    const std::string folder = FolderOf(path);
    std::string newPath;
    OwnedDescriptor file(CreateBeside(folder, newPath));
    if (file.Get() < 0) {
        return false;
    }
    struct stat old {};
    const bool isReplaced = stat(path.c_str(), &old) == 0;
    // The owner is set first, because setting it may remove permissions. If the owner cannot be set because the
    // file belongs to someone else, the file is replaced all the same.
    const bool isOwned = !isReplaced || fchown(file.Get(), old.st_uid, old.st_gid) == 0 || errno == EPERM;
    if (!isOwned || (isReplaced && fchmod(file.Get(), old.st_mode & 0777U) != 0) || !WriteAll(file.Get(), bytes) ||
        fsync(file.Get()) != 0 || !file.Close() || std::rename(newPath.c_str(), path.c_str()) != 0) {
        unlink(newPath.c_str());
        return false;
    }
    FlushFolder(folder);
    return true;
}

}  // namespace Lum::Internal::Host
