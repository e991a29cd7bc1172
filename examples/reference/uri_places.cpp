// Where one URI lies as seen from another: references, relations, folders that two share, aliases; and a class of the
// application's own that changes the library's answers.
#include <iostream>
#include <string>

#include <Lum/URI.h>

namespace {

// The links of a page, made absolute, and short again when the page is stored.
void Links() {
    const Lum::URI page("http://h/docs/guide/index.html");
    std::cout << "On " << page << ":\n";
    for (const char* href : {"logo.png", "../img/a.png", "/top", "#part", "http://other/"}) {
        Lum::URI link(href);
        link.MakeAbsoluteURI(page);
        std::cout << "  " << href << " is " << link;
        link.MakeRelativeURI(page, true);
        std::cout << ", kept as " << link << '\n';
    }
    Lum::URI place(page);
    place.ChDir("../50% off/", true);  // Raw text, to be escaped.
    std::cout << "  cd: " << place << '\n';
}

// Says in words what one place is to another.
const char* Say(int relation) {
    switch (relation) {
        case Lum::kRelationNone:
            return "apart from";
        case Lum::kRelationChild:
            return "below";
        case Lum::kRelationSame:
            return "the same as";
        default:
            return relation == Lum::RelationCode::kRelationParent ? "above" : "?";
    }
}

void Relations() {
    const Lum::URI a("http://h/a/b/c.txt"), b("http://h:80/a/");
    std::cout << a << " is " << Say(a.GetRelation(b, true)) << ' ' << b << '\n'
              << "b is " << Say(Lum::URI::GetRelationByString(b.ToString(false), a.ToString(false))) << " a, x is "
              << Say(Lum::URI::GetRelationByString("http://x/", "http://h/")) << " h, h is "
              << Say(Lum::URI::GetRelationByString("http://h", "http://h/")) << " h/\n";
    std::cout << "Both are in " << a.GetCommonParent(Lum::URI("http://h/a/d/e"), true) << " and "
              << Lum::URI::GetCommonParentByString("http://h/A/x", "http://h/a/y", false) << '\n';
    std::cout << "One server: " << Lum::URI::CompareAuthority("http://h/x", "ftp://h/y")
              << ", below \"b\": " << a.IsUnderDirectory("b") << '\n';
}

// An alias that only the application knows: relations ask it for both URIs first. It asks the resolver that was
// installed before it.
class Mirror : public Lum::URIResolver {
public:
    Lum::URI Resolve(const Lum::URI& uri) override {
        Lum::URI target(uri);
        if (uri.GetAuthority() == "mirror") {
            target.SetAuthority("h");
        }
        return before == nullptr ? target : before->Resolve(target);
    }

    Lum::URIResolver* before = nullptr;
};

void Aliases() {
    Mirror mirror;
    mirror.before = Lum::URI::SetResolver(&mirror);
    std::cout << "An alias: " << Lum::URI::Resolve(Lum::URI("http://mirror/a")) << ", "
              << Say(Lum::URI::GetRelationByString("http://mirror/a", "http://h/a")) << '\n';
    Lum::URI::SetResolver(mirror.before);
}

// An address field that takes links to the web alone: a class of the application's own answers a question.
class WebAddress : public Lum::URI {
public:
    using Lum::URI::URI;
    bool IsValidURI() const override { return m_IsValid && (m_Scheme == "http" || m_Scheme == "https"); }
};

}  // namespace

int main() {
    Links();
    Relations();
    Aliases();
    std::cout << WebAddress("https://h/a").IsValidURI() << WebAddress("ftp://h/a").IsValidURI() << '\n';
}
