// Reads texts, ends results and reports texts that were refused.
#include "tools/lum/Texts.h"

#include <utility>

#include <Lum/URIProblem.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Display.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Problems.h"

namespace Tool {

void ResultForm::AddTo(CLI::App& command) {
    command.add_flag("--json", isJson, "Print one JSON object a line");
    command.add_flag("-0,--null", endsInNull, "End texts with a NUL, not a line feed, those read and those written");
}

void ResultForm::Write(std::string text) const { WriteText(std::move(text.append(1, endsInNull ? '\0' : '\n'))); }

void Texts::AddArguments(CLI::App& command, const std::string& name, const std::string& help) {
    AddTexts(command, name, given, help + "; without any, the lines of standard input");
}

void Texts::ForEach(const std::function<void(std::string_view)>& use) {
    const auto count = [&](std::string_view text) {
        ++m_Count;
        use(text);
    };
    if (given.empty()) {
        ForEachInputLine(endsInNull ? '\0' : '\n', count);
    }
    for (const std::string& text : given) {
        count(text);
    }
    if (m_Refused > 0) {
        FlushOutput();
        const std::string others = m_Refused == 1 ? "" : ", and " + std::to_string(m_Refused - 1) + " more";
        WriteError(m_FirstRefused + others);
    }
}

void Texts::Refuse(std::string_view text, const std::string& why) {
    if (isJson || m_Refused++ > 0) {
        return;
    }
    const std::string number = std::to_string(m_Count);
    const std::string where = given.empty() ? "standard input, " + std::string(endsInNull ? "text " : "line ") + number
                                            : '"' + Printable(text) + '"';
    const std::string notValid =
        "not valid: " + std::string(TextOf(Lum::ExplainURI(text).code).what) + " (lum explain says what to do)";
    m_FirstRefused = where + ": " + (why.empty() ? notValid : why);
}

}  // namespace Tool
