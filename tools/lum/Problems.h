// The faults of a URI in words: what is wrong, the rule behind it, and what to do.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include <Lum/URIProblem.h>

namespace Tool {

struct ProblemText {
    Lum::URIProblemCode code;
    std::string_view what;
    std::string_view rule;
    std::string_view advice;
};

constexpr std::array<ProblemText, 6> kProblemTexts{{
    {Lum::URIProblemCode::kValid, "valid", "", ""},
    {Lum::URIProblemCode::kSchemeTooShort, "scheme too short",
     "what stands before the first \":\" is a scheme, of two letters or more",
     "a file's path becomes a URI by lum path --from win; in a relative reference write \"./\" first"},
    {Lum::URIProblemCode::kSchemeNotLetters, "scheme with a character that is no letter",
     "what stands before the first \":\" is a scheme, of ASCII letters only",
     "in a relative reference write \"./\" first, or \"%3A\" for the \":\""},
    {Lum::URIProblemCode::kBackslashInPath, "backslash in the path", "a path holds no \"\\\"",
     "write \"/\" between segments, \"%5C\" for a backslash in a name"},
    {Lum::URIProblemCode::kBackslashInNonHierarchical, "backslash in the non-hierarchical part",
     "what follows a scheme without \"//\" holds no \"\\\"", "write \"%5C\" for a backslash"},
    {Lum::URIProblemCode::kSchemeUnknown, "scheme \"unknown\"", "the scheme \"unknown\" marks a URI that is empty",
     "use another scheme"},
}};

constexpr const ProblemText& TextOf(Lum::URIProblemCode code) {
    return *std::find_if(kProblemTexts.begin(), kProblemTexts.end(),
                         [&](const ProblemText& t) { return t.code == code; });
}

}  // namespace Tool
