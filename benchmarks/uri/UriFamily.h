// The cases of the URI family, what they work on, and the subjects that have them.
//
// Every peer is given text in its own string type and gives back its own, so that no conversion is
// charged to it, and is called as its users call it. A peer that cannot reuse an object is measured
// with fresh ones there; a floor does the least that the result can cost.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace Bench::Uri {

inline const std::string kParseFresh = "uri/parse fresh";
inline const std::string kParseOneStep = "uri/parse one step";
inline const std::string kParseReused = "uri/parse reused";
inline const std::string kPrint = "uri/print";

/// A case that turns one text into another.
struct TextCase {
    std::string name;  ///< "family/case"
    std::vector<std::string> texts;
};

struct Inputs {
    std::vector<std::string> urls;
    /// What print starts from: some of the URLs, all of which every subject accepts.
    std::vector<std::string> printed;
    std::vector<TextCase> escapes;
    std::vector<TextCase> unescapes;
};

struct Subject {
    std::string name;
    /// Whether the subject takes this text for a URI; null where it does not read the text.
    bool (*accepts)(const std::string& text);
    /// Registers the subject's cases under `name`; `inputs` outlives them.
    void (*addCases)(const std::string& name, const Inputs& inputs);
};

std::vector<Subject>& Subjects();

/// Adds a subject from a file of its own, ahead of main.
struct AddSubject {
    explicit AddSubject(Subject subject) { Subjects().push_back(std::move(subject)); }
};

/// The list used where none is given, a URL a line.
extern const char* const kBuiltInUrls;

}  // namespace Bench::Uri
