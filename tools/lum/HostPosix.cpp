// Terminals and files as POSIX has them.
#include "tools/lum/Host.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tools/lum/Display.h"

namespace Tool {
namespace {

constexpr std::array<int, 7> kEndings{SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGXCPU, SIGXFSZ};

/// What an interrupted program leaves nothing of. Only a kill that cannot be caught leaves it.
std::atomic<const char*>& Unfinished() {
    static std::atomic<const char*> path{nullptr};
    static_assert(std::atomic<const char*>::is_always_lock_free, "a signal handler reads it");
    return path;
}

extern "C" void RemoveUnfinished(int signal) {
    if (const char* const path = Unfinished().exchange(nullptr)) {
        unlink(path);
    }
    // The handler has been taken off, so that this ends the program as the signal would have.
    raise(signal);
}

void RemoveWhenInterrupted(const std::string& path) {
    Unfinished() = path.c_str();
    for (const int ending : kEndings) {
        struct sigaction action {};
        if (sigaction(ending, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            action.sa_handler = RemoveUnfinished;
            action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
            sigaction(ending, &action, nullptr);
        }
    }
}

/// Keeps signals waiting.
class Uninterrupted {
public:
    Uninterrupted() {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_SETMASK, &all, &m_Before);
    }
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;
    ~Uninterrupted() { sigprocmask(SIG_SETMASK, &m_Before, nullptr); }

private:
    sigset_t m_Before{};
};

}  // namespace

std::size_t TerminalColumns() {
    if (isatty(STDOUT_FILENO) == 0) {
        return 0;
    }
    if (const char* const wanted = std::getenv("COLUMNS")) {
        std::size_t columns = 0;
        const auto [end, error] = std::from_chars(wanted, wanted + std::strlen(wanted), columns);
        if (error == std::errc() && *end == '\0' && columns > 0) {
            return columns;
        }
    }
    struct winsize size {};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool IsSameFile(int descriptor, int other) {
    struct stat a {
    }, b{};
    return fstat(descriptor, &a) == 0 && fstat(other, &b) == 0 && S_ISREG(a.st_mode) && a.st_dev == b.st_dev &&
           a.st_ino == b.st_ino;
}

FolderLock::FolderLock(const std::string& file) {
    std::error_code none;
    // Absolute first: the canonical form of a bare name that is not there yet has no folder.
    const auto folder = std::filesystem::weakly_canonical(std::filesystem::absolute(file, none), none).parent_path();
    m_Folder = open(folder.c_str(), O_RDONLY | O_CLOEXEC);
    // Some file systems have no locks.
    while (m_Folder >= 0 && flock(m_Folder, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FolderLock::~FolderLock() {
    if (m_Folder >= 0) {
        close(m_Folder);
    }
}

struct FileReplacement::State {
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        for (const int open : {locked, descriptor}) {
            if (open >= 0) {
                close(open);
            }
        }
    }

    struct stat before {};
    int locked = -1;      ///< The old content, which other runs of the tool leave alone meanwhile.
    int descriptor = -1;  ///< The new content.
};

FileReplacement::FileReplacement(const std::string& file) : m_File(file) {
    const std::unique_ptr<char, decltype(&std::free)> path(realpath(file.c_str(), nullptr), &std::free);
    if (path == nullptr) {
        Fail("cannot open", errno);
    }
    m_File = path.get();
    auto state = std::make_unique<State>();
    if (stat(m_File.c_str(), &state->before) != 0 || faccessat(AT_FDCWD, m_File.c_str(), W_OK, AT_EACCESS) != 0) {
        Fail("cannot write", errno);
    }
    if (!S_ISREG(state->before.st_mode)) {
        Fail("cannot be converted in place; no regular file:", 0);
    }
    // Some file systems have no locks.
    state->locked = open(m_File.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (state->locked >= 0 && flock(state->locked, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        Fail("converted by another run at this moment:", 0);
    }
    struct stat now {};
    if (state->locked >= 0 && (fstat(state->locked, &now) != 0 || now.st_ino != state->before.st_ino ||
                               stat(m_File.c_str(), &now) != 0 || now.st_ino != state->before.st_ino)) {
        Fail("another program has changed", 0);
    }
    // In the same folder, since a file moves as a whole only within a file system.
    m_Beside = m_File.substr(0, m_File.rfind('/') + 1) + ".lum-XXXXXX";
    const Uninterrupted untilKnown;
    state->descriptor = mkstemp(m_Beside.data());
    if (state->descriptor < 0) {
        m_Beside.clear();
        Fail("cannot write beside", errno);
    }
    RemoveWhenInterrupted(m_Beside);
    m_State = std::move(state);
}

FileReplacement::~FileReplacement() {
    if (!m_Beside.empty()) {
        Unfinished() = nullptr;
        unlink(m_Beside.c_str());
    }
}

bool FileReplacement::HasOtherNames() const { return m_State->before.st_nlink > 1; }

void FileReplacement::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = write(m_State->descriptor, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            Fail("cannot write beside", errno);
        }
    }
}

void FileReplacement::Finish() {
    const struct stat& before = m_State->before;
    struct stat made {};
    if (fstat(m_State->descriptor, &made) != 0) {
        Fail("cannot write beside", errno);
    }
    // The owner first, for a change of owner takes bits of the mode away.
    const bool isOwned = made.st_uid == before.st_uid && made.st_gid == before.st_gid;
    if (!isOwned && fchown(m_State->descriptor, before.st_uid, before.st_gid) != 0) {
        Fail("cannot keep the owner of", errno);
    }
    if (fchmod(m_State->descriptor, before.st_mode & 07777U) != 0) {
        Fail("cannot keep the mode of", errno);
    }
    if (fsync(m_State->descriptor) != 0) {
        Fail("cannot write beside", errno);
    }
    struct stat now {};
    if (stat(m_File.c_str(), &now) != 0) {
        Fail("cannot open", errno);
    }
    const bool isUnchanged = now.st_dev == before.st_dev && now.st_ino == before.st_ino &&
                             now.st_size == before.st_size && now.st_mtim.tv_sec == before.st_mtim.tv_sec &&
                             now.st_mtim.tv_nsec == before.st_mtim.tv_nsec;
    if (!isUnchanged) {
        Fail("another program has changed", 0);
    }
    if (rename(m_Beside.c_str(), m_File.c_str()) != 0) {
        Fail("cannot replace", errno);
    }
    Unfinished() = nullptr;
    m_Beside.clear();
    // That the new name lasts as well. Some file systems cannot be asked for this, and either content is whole.
    const int folder = open(m_File.substr(0, m_File.rfind('/') + 1).c_str(), O_RDONLY);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

void FileReplacement::Fail(const std::string& what, int error) const {
    throw std::runtime_error(what + " \"" + Printable(m_File) + '"' +
                             (error == 0 ? "" : std::string(": ") + std::strerror(error)));
}

}  // namespace Tool
