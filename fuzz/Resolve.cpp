// Property: any reference applies to any base; relations agree from both sides and with the common
// parent; what is made relative is relative; the last component removed is the one that was reported.
#include <string>

#include <Lum/URI.h>

#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string::size_type divider = text.find('\n');
    const Lum::URI base(text.substr(0, divider));
    const std::string reference = divider == std::string::npos ? text : text.substr(divider + 1);
    Lum::URI uri = base;
    uri.ChDir(reference, false);
    Lum::URI made(reference);
    const bool isMade = made.MakeAbsoluteURI(base);
    // The scheme "unknown" goes as soon as there is a path, and the result is relative.
    Require(!isMade || made.IsAbsolute() || base.IsOfType("unknown"));

    const int relation = base.GetRelation(uri, true);
    const int reverse = uri.GetRelation(base, true);
    Require(relation == reverse || relation + reverse == Lum::kRelationChild + Lum::kRelationParent);
    const Lum::URI parent = base.GetCommonParent(uri, true);
    Require(!parent.IsValidURI() || parent.GetCommonParent(uri, true) == parent);
    Lum::URI relative = uri;
    if (relative.MakeRelativeURI(base, true) && uri.IsValidURI() && !uri.IsRelative() && uri.IsHierarchical()) {
        Require(relative.IsRelative());
    }
    const std::string component = uri.GetLastPathComponent();
    Require(uri.RemoveLastPathComponent() == component);
    uri.ChDir(reference, true);
    return 0;
}
