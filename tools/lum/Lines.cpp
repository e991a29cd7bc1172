// Lines are cut from blocks, so that they may hold bytes of any value, and one that is there is not waited for.
#include "tools/lum/Lines.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include <unistd.h>

#include "tools/lum/Input.h"
#include "tools/lum/Progress.h"

namespace Tool {
namespace {

[[noreturn]] void Fail(const char* what, int error) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(error));
}

/// Saves calls of the system where there are many short texts. Nothing may have been written before.
void BufferOutput() {
    if (isatty(STDOUT_FILENO) == 0) {
        static std::array<char, 65536> buffer;
        std::setvbuf(stdout, buffer.data(), _IOFBF, buffer.size());
    }
}

}  // namespace

void ForEachInputLine(char end, const std::function<void(std::string_view)>& use) {
    BufferOutput();
    Input input("-");
    Progress progress("lines", 1, 4000, input.IsTerminal());
    const auto take = [&](std::string_view line) {
        use(line);
        progress.Advance(1);
    };
    std::array<char, 65536> block;
    std::string begun;  // a line whose end has not been read
    for (;;) {
        // Whoever wrote the lines so far may wait for their results before the next one.
        FlushOutput();
        const std::size_t got = input.Read(block);
        if (got == 0) {
            break;
        }
        std::string_view rest(block.data(), got);
        for (std::size_t at = rest.find(end); at != rest.npos; at = rest.find(end)) {
            std::string_view line = rest.substr(0, at);
            if (!begun.empty()) {
                line = begun.append(line);
            }
            take(line.substr(0, line.size() - (end == '\n' && line.ends_with('\r') ? 1 : 0)));
            begun.clear();
            rest.remove_prefix(at + 1);
        }
        begun.append(rest);
    }
    if (!begun.empty()) {
        take(begun);
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
