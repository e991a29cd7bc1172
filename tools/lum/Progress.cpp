// Writes the count in one line of the terminal.
#include "tools/lum/Progress.h"

#include <cinttypes>
#include <cstdio>
#include <utility>

#include <unistd.h>

namespace Tool {

Progress::Progress(std::string unit, std::uint64_t unitSize, std::uint64_t every, bool readsTerminal)
    : m_IsWatched(isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0 && !readsTerminal),
      m_Unit(std::move(unit)),
      m_UnitSize(unitSize),
      m_Every(unitSize * every),
      m_NextShown(m_Every) {}

Progress::~Progress() {
    if (m_IsShown) {
        std::fputs("\r\033[K", stderr);
    }
}

void Progress::Advance(std::uint64_t amount) {
    m_Done += amount;
    if (m_IsWatched && m_Done >= m_NextShown) {
        m_NextShown = m_Done + m_Every;
        m_IsShown = true;
        std::fprintf(stderr, "\r%" PRIu64 " %s", m_Done / m_UnitSize, m_Unit.c_str());
    }
}

}  // namespace Tool
