// Lines are cut from blocks, so that they may hold bytes of any value, and one that is there is not waited for.
#include "tools/lum/Lines.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "tools/lum/Input.h"
#include "tools/lum/Progress.h"

namespace Tool {
namespace {

[[noreturn]] void Fail(const char* what, int error) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(error));
}

}  // namespace

void ForEachInputLine(const std::function<void(std::string_view)>& use) {
    Input input("-");
    Progress progress("lines", 1, 4000, input.IsTerminal());
    const auto take = [&](std::string_view line) {
        use(line);
        progress.Advance(1);
    };
    std::array<char, 65536> block;
    std::string begun;  // a line whose end has not been read
    while (const std::size_t got = input.Read(block)) {
        std::string_view rest(block.data(), got);
        for (std::size_t end = rest.find('\n'); end != rest.npos; end = rest.find('\n')) {
            std::string_view line = rest.substr(0, end);
            if (!begun.empty()) {
                line = begun.append(line);
            }
            take(line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0)));
            begun.clear();
            rest.remove_prefix(end + 1);
        }
        begun.append(rest);
    }
    if (!begun.empty()) {
        take(begun);
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
