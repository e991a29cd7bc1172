// The texts that a subcommand works on and the form of its results: options that have the same names everywhere.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/App.hpp>

namespace Tool {

/// How results are written. The object must stay where it is until the command line has been read.
struct ResultForm {
    /// Adds --json and --null.
    void AddTo(CLI::App& command);
    /// Writes a bare text, and what ends it.
    void Write(std::string text) const;

    bool isJson = false;
    bool endsInNull = false;
};

/// The texts of a subcommand: its arguments or, without any, what standard input holds.
struct Texts : ResultForm {
    /// Adds the texts, as arguments that the help calls `name`.
    void AddArguments(CLI::App& command, const std::string& name, const std::string& help);
    /// Calls `use` with each text. Then says on standard error how many were refused, and which one was first.
    void ForEach(const std::function<void(std::string_view)>& use);
    /// Remembers that the text in hand, shown as `text`, has no result, and why; without a reason, that it is no valid
    /// URI. JSON says so itself.
    void Refuse(std::string_view text, const std::string& why = {});

    std::vector<std::string> given;

private:
    std::uint64_t m_Count = 0;
    std::uint64_t m_Refused = 0;
    std::string m_FirstRefused;
};

}  // namespace Tool
