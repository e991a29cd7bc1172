// How far a long run is, for somebody who watches it.
#pragma once

#include <cstdint>
#include <string>

namespace Tool {

/// "12000 lines" on standard error, overwritten as it grows and gone at the end. Shown on a terminal
/// only, and only where neither the input nor the results are on it.
class Progress {
public:
    /// Counts in units of `unitSize`, and shows the count each time another `every` of them are done.
    Progress(std::string unit, std::uint64_t unitSize, std::uint64_t every, bool readsTerminal);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void Advance(std::uint64_t amount);

private:
    const bool m_IsWatched;
    const std::string m_Unit;
    const std::uint64_t m_UnitSize;
    const std::uint64_t m_Every;
    std::uint64_t m_Done = 0;
    std::uint64_t m_NextShown;
    bool m_IsShown = false;
};

}  // namespace Tool
