// Reads and writes through the C library's streams, whose getline takes bytes of any value.
#include "tools/lum/Lines.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <unistd.h>

#include "tools/lum/Progress.h"

namespace Tool {
namespace {

[[noreturn]] void Fail(const char* what, int error) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(error));
}

struct LineBuffer {
    char* data = nullptr;
    std::size_t capacity = 0;
    LineBuffer() = default;
    LineBuffer(const LineBuffer&) = delete;
    LineBuffer& operator=(const LineBuffer&) = delete;
    ~LineBuffer() { std::free(data); }
};

}  // namespace

void ForEachInputLine(const std::function<void(std::string_view)>& use) {
    Progress progress("lines", 1, 4000, isatty(STDIN_FILENO) != 0);
    LineBuffer buffer;
    for (;;) {
        errno = 0;
        const ssize_t size = getline(&buffer.data, &buffer.capacity, stdin);
        if (size < 0) {
            if (std::feof(stdin) == 0) {
                Fail("cannot read standard input", errno);
            }
            return;
        }
        std::string_view line(buffer.data, static_cast<std::size_t>(size));
        if (line.ends_with('\n')) {
            line.remove_suffix(1);
            if (line.ends_with('\r')) {
                line.remove_suffix(1);
            }
        }
        use(line);
        progress.Advance(1);
    }
}

void ForEachText(const std::vector<std::string>& texts, const std::function<void(std::string_view)>& use) {
    if (texts.empty()) {
        ForEachInputLine(use);
    }
    for (const std::string& text : texts) {
        use(text);
    }
}

void WriteText(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
        Fail("cannot write standard output", errno);
    }
}

void WriteLine(const std::string& text) { WriteText(text + '\n'); }

void FlushOutput() {
    if (std::fflush(stdout) != 0) {
        Fail("cannot write standard output", errno);
    }
}

void WriteError(const std::string& message) { std::fprintf(stderr, "lum: %s\n", message.c_str()); }

}  // namespace Tool
