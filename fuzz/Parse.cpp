// Property: any text parses, answers every question and prints; what is printed parses to a URI that
// prints the same from then on, and a reused object holds what a fresh one does.
#include <string>

#include <Lum/URI.h>

#include "Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    static Lum::URI reused;
    const bool isValid = reused.ParseURI(text);
    const Lum::URI uri(text);
    Require(uri.IsValidURI() == isValid && uri == reused && uri.ToString(true) == reused.ToString(true));
    Require(isValid || uri == "unknown:");

    std::string parts[6];
    uri.GetParts(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]);
    Require(parts[0] == uri.GetScheme() && parts[1] == uri.GetAuthority() && parts[2] == uri.GetServerPort() &&
            parts[3] == uri.GetPath() && parts[4] == uri.GetQuery(true) && parts[5] == uri.GetFragment());
    Require(uri.GetUsername().size() + uri.GetPassword().size() + uri.GetNonHierarchical().size() +
                uri.GetDefaultPort().size() + uri.ToStringUTF8().size() + uri.ToStringUTF8Escaped().size() <
            9 * size + 100);

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
