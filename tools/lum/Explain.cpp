// lum explain: why a text is not a valid URI and what to do, and where others read it in another way.
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/URIProblem.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Commands.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Look.h"
#include "tools/lum/Oddities.h"
#include "tools/lum/Output.h"
#include "tools/lum/Problems.h"
#include "tools/lum/Texts.h"

namespace Tool {
namespace {

void ExplainAsJson(std::string_view text, const Lum::URIProblem& problem, const std::vector<Oddity>& oddities) {
    auto list = nlohmann::ordered_json::array();
    for (const Oddity& oddity : oddities) {
        list.push_back({{"id", oddity.id}, {"says", oddity.says}, {"why", oddity.why}});
    }
    const ProblemText& words = TextOf(problem.code);
    nlohmann::ordered_json object{{"input", text}, {"valid", problem.code == Lum::URIProblemCode::kValid}};
    if (problem.code != Lum::URIProblemCode::kValid) {
        object.update(
            {{"reason", words.what}, {"offset", problem.offset}, {"rule", words.rule}, {"advice", words.advice}});
    }
    object["oddities"] = list;
    WriteJson(object);
}

std::string Explained(std::string_view text, const Lum::URIProblem& problem, const std::vector<Oddity>& oddities) {
    std::string lines;
    const ProblemText& words = TextOf(problem.code);
    if (problem.code == Lum::URIProblemCode::kValid) {
        lines =
            Subject(text) +
            Row("valid", oddities.empty() ? "none of the known differences from RFC 3986 and browsers is in it" : "");
    } else {
        lines = Marked(text, problem.offset, problem.length) + Row("not valid", words.what) + Row("rule", words.rule) +
                Row("what to do", words.advice);
    }
    for (const Oddity& oddity : oddities) {
        lines += Row("oddity", oddity.id) + Row("", oddity.says) + Row("", oddity.why);
    }
    return lines;
}

}  // namespace

void AddExplain(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("explain", "Say why a text is not valid, and where others read it otherwise");
    const auto texts = std::make_shared<Texts>();
    texts->AddTo(*command);
    texts->AddArguments(*command, "URI", "The URIs");
    command->callback([texts, &status] {
        bool isFirst = true;
        texts->ForEach([&](std::string_view text) {
            const Lum::URIProblem problem = Lum::ExplainURI(text);
            const std::vector<Oddity> oddities = OdditiesOf(text);
            if (texts->isJson) {
                ExplainAsJson(text, problem, oddities);
            } else {
                WriteText((isFirst ? "" : "\n") + Explained(text, problem, oddities));
            }
            isFirst = false;
            status |= problem.code == Lum::URIProblemCode::kValid ? 0 : 1;
        });
    });
}

}  // namespace Tool
