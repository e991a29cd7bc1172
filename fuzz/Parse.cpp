// Property: any text is split as by the plain splitter, and ExplainURI finds a fault exactly where it is not valid;
// what is printed parses to a URI that prints the same from then on; and a
// reused object holds what a fresh one does.
#include <string>

#include "fuzz/Fuzz.h"
#include "tests/URI/Exposed.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    static Exposed reused;
    const bool isValid = reused.ParseURI(text);
    const Exposed uri(text);
    Require(uri.Record() == reused.Record() && uri.IsValidURI() == isValid);
    const Lum::URIProblem problem = Lum::ExplainURI(text);
    Require((problem.code == Lum::URIProblemCode::kValid) == isValid);
    Require(problem.offset <= size && problem.length <= size - problem.offset);
    Require(isValid ? uri.HoldsPiecesOf(text) : uri.Record() == kEmptyState);

    // Two rounds settle it: a delimiter that stood twice loses its empty tail in the first.
    Lum::URI again(uri.ToString(false));
    for (std::string printed; printed != again.ToString(false);) {
        printed = again.ToString(false);
        again = printed;
        Require(printed.size() <= 3 * size + 16);
    }

    Lum::URI edited = uri;
    edited.SetParts(text, text, text, text, text, text);
    edited.SetPath(uri.GetPath());
    Require(edited.GetPath() == uri.GetPath() && edited.GetFragment() == text && edited.GetQuery(true) == text);
    edited.SetNonHierarchical(text);
    Require(edited.GetNonHierarchical() == text);
    return 0;
}
