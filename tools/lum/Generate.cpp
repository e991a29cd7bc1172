// lum generate: the manual page, and completions for shells.
#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/lum/Commands.h"
#include "tools/lum/Completions.h"
#include "tools/lum/Lines.h"
#include "tools/lum/Manual.h"

namespace Tool {
namespace {

struct Form {
    const char* name;
    std::string (*make)(const CLI::App& app);
};
constexpr std::array<Form, 4> kForms{
    {{"man", ManualPage}, {"bash", BashCompletion}, {"zsh", ZshCompletion}, {"fish", FishCompletion}}};

}  // namespace

void AddGenerate(CLI::App& app, int& /*status*/) {
    auto* command = app.add_subcommand("generate", "Print the manual page, or what completes lum in a shell");
    const auto wanted = std::make_shared<std::string>();
    std::vector<std::string> names;
    for (const Form& form : kForms) {
        names.emplace_back(form.name);
    }
    command->add_option("WHAT", *wanted, "Which one")->required()->check(CLI::IsMember(names));
    command->callback([&app, wanted] {
        const auto* const form =
            std::find_if(kForms.begin(), kForms.end(), [&](const Form& one) { return one.name == *wanted; });
        WriteText(form->make(app));
    });
}

}  // namespace Tool
