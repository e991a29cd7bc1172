// Reads through descriptors, which give what there is without waiting for a full block.
#include "tools/lum/Input.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

#include "tools/lum/Display.h"
#include "tools/lum/Host.h"

namespace Tool {

Input::Input(const std::string& file)
    : m_Name(file == "-" ? "standard input" : '"' + Printable(file) + '"'),
      m_Descriptor(file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY)),
      m_Start(m_Descriptor < 0 ? -1 : lseek(m_Descriptor, 0, SEEK_CUR)) {
    if (m_Descriptor < 0) {
        Fail("open");
    }
}

Input::~Input() { close(m_Descriptor); }

bool Input::IsTerminal() const { return isatty(m_Descriptor) != 0; }
bool Input::IsOutput() const { return IsSameFile(m_Descriptor, STDOUT_FILENO); }

std::size_t Input::Read(std::span<char> block) {
    for (;;) {
        const auto got = read(m_Descriptor, block.data(), block.size());
        if (got >= 0) {
            return static_cast<std::size_t>(got);
        }
        if (errno != EINTR) {
            Fail("read");
        }
    }
}

std::uint64_t Input::CountLineFeedsAgain(std::uint64_t size) {
    if (lseek(m_Descriptor, m_Start, SEEK_SET) < 0) {
        Fail("read");
    }
    std::uint64_t count = 0;
    std::array<char, 65536> block;
    for (std::size_t got = 1; size > 0 && got > 0; size -= got) {
        got = Read(std::span(block).first(static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), size))));
        count += CountLineFeeds({block.data(), got});
    }
    return count;
}

void Input::Fail(const char* what) const {
    throw std::runtime_error(std::string("cannot ") + what + ' ' + m_Name + ": " + std::strerror(errno));
}

std::uint64_t CountLineFeeds(std::string_view text) {
    // Not std::count, which looks at one byte at a time.
    std::uint64_t count = 0;
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string_view::npos; ++at) {
        ++count;
    }
    return count;
}

}  // namespace Tool
