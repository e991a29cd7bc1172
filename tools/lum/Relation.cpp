// lum relation: whether one URI is the other, above it or below it.
#include <memory>
#include <string>
#include <string_view>

#include <Lum/URI.h>
#include <CLI/CLI.hpp>

#include "tools/lum/Arguments.h"
#include "tools/lum/Commands.h"
#include "tools/lum/Output.h"
#include "tools/lum/Texts.h"

namespace Tool {
namespace {

std::string_view WordFor(int relation) {
    switch (relation) {
        case Lum::kRelationChild:
            return "child";
        case Lum::kRelationSame:
            return "same";
        case Lum::kRelationParent:
            return "parent";
        default:
            return "none";
    }
}

}  // namespace

void AddRelation(CLI::App& app, int& status) {
    auto* command = app.add_subcommand("relation", "Tell what URI A is to URI B: none 0, child 1, same 2, parent 3");
    struct Options {
        ResultForm form;
        bool ignoreCase = false;
        std::string a;
        std::string b;
    };
    const auto options = std::make_shared<Options>();
    options->form.AddTo(*command);
    command->add_flag("--ignore-case", options->ignoreCase, "Take paths that differ in case for the same");
    AddText(*command, "A", options->a, "A URI")->required();
    AddText(*command, "B", options->b, "Another URI")->required();
    command->callback([options, &status] {
        const Lum::URI a(options->a);
        const Lum::URI b(options->b);
        status = a.IsValidURI() && b.IsValidURI() ? 0 : 1;
        const int relation = status == 0 ? a.GetRelation(b, !options->ignoreCase) : Lum::kRelationNone;
        if (options->form.isJson) {
            WriteJson({{"a", options->a},
                       {"b", options->b},
                       {"valid", status == 0},
                       {"relation", WordFor(relation)},
                       {"code", relation}});
        } else {
            options->form.Write(std::string(WordFor(relation)) + ' ' + std::to_string(relation));
        }
    });
}

}  // namespace Tool
