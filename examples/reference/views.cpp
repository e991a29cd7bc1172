// A link that belongs to somebody else: what is wrong with it, what is in it, what may be logged of it, and changes
// that leave every other byte alone.
#include <iostream>
#include <string>

#include <Lum/PathView.h>
#include <Lum/QueryView.h>
#include <Lum/Redaction.h>
#include <Lum/URI.h>
#include <Lum/URIProblem.h>

namespace {

// A message for whoever typed the text.
std::string Explain(const std::string& text) {
    const Lum::URIProblem problem = Lum::ExplainURI(text);
    const std::string place = " at " + std::to_string(problem.offset) + ", " + std::to_string(problem.length) + " long";
    switch (problem.code) {
        case Lum::URIProblemCode::kValid:
            return "is fine";
        case Lum::URIProblemCode::kSchemeTooShort:
            return "has a scheme of one letter" + place;
        case Lum::URIProblemCode::kSchemeNotLetters:
            return "has a scheme that is not all letters" + place;
        case Lum::URIProblemCode::kBackslashInPath:
            return "has a backslash in its path" + place;
        case Lum::URIProblemCode::kBackslashInNonHierarchical:
            return "has a backslash" + place;
        case Lum::URIProblemCode::kSchemeUnknown:
            return "is the word for no URI" + place;
    }
    return "?";
}

// Every pair as stored, and one that is changed.
void Query(Lum::URI& uri) {
    const Lum::QueryView pairs(uri);
    std::cout << pairs.size() << " pairs, the first \"page\" at " << pairs.Find("page") << ", \"none\" "
              << (pairs.Find("none") == Lum::QueryView::npos ? "nowhere" : "somewhere") << '\n';
    for (const Lum::QueryPair pair : pairs) {
        std::cout << "  [" << pair.text << "] " << pair.key << " -> " << pair.value << (pair.hasValue ? "" : "(none)")
                  << ", " << pair.GetKey() << " -> " << pair.GetValue() << '\n';
    }
    Lum::QueryEdit edit(uri);
    edit.Set("page", "3");
    edit.Append("from", "a b");
    edit.Insert(0, "v", "2");
    edit.Replace(1, "q", "50%");
    edit.ReplaceValue(0, "1");
    std::cout << edit.GetText() << ", " << edit.View().size() << " pairs\n";
    edit.Remove(0);
    std::cout << edit.RemoveAll("x") << " of x removed\n";
    edit.PutInto(uri);
    std::cout << uri << '\n';
}

void Path(Lum::URI& uri) {
    const Lum::PathView segments(uri);
    std::cout << segments.IsRooted() << ", \"c\" at " << segments.Find("c") << ", \"z\" "
              << (segments.Find("z") == Lum::PathView::npos ? "nowhere" : "somewhere") << ':';
    for (const Lum::PathSegment segment : segments) {
        std::cout << " [" << segment.text << "] " << segment.GetName();
    }
    std::cout << '\n';
    Lum::PathEdit edit(uri);
    edit.Replace(edit.Find("c"), "50%");
    edit.Insert(0, "new/er");
    edit.Append("end");
    edit.Remove(1);
    edit.SetRooted(true);
    std::cout << edit.GetCount() << " segments: " << edit.GetText() << '\n';
    edit.PutInto(uri);
    std::cout << uri << '\n';
}

}  // namespace

int main() {
    for (const char* text : {"http://h/", "c:/dir", "h2:x", "http://h/a\\b", "mailto:a\\b", "unknown://h/"}) {
        std::cout << text << ' ' << Explain(text) << '\n';
    }
    static_assert(Lum::ExplainURI("a b") == Lum::URIProblem{});  // At compile time, too.

    Lum::URI uri("http://me:secret@h/a%2Fb//c?q=%7e&page=2&&x&x=1&page=9");
    std::cout << Lum::Redacted(uri, {"q"}) << "\n" << Lum::Redacted("h2://me:sec/ret@h\\x") << '\n';
    Query(uri);
    Path(uri);
}
