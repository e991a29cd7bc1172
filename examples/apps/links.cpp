// A link checker's list: the links of a page made absolute, in one form, each once, with what nobody needs to ask for
// left out and what is no link explained.
//
// Usage: links PAGE-URI <HREFS
#include <iostream>
#include <map>
#include <string>

#include <Lum/PathView.h>
#include <Lum/URI.h>

namespace {

// The text that is the same for all links to one thing: no fragment, no default port, a path, one form of escapes.
std::string Normalized(Lum::URI link) {
    link.SetFragment("");
    if (link.GetServerPort() == link.GetDefaultPort()) {
        link.SetServerPort("");
    }
    if (link.GetPath().empty()) {
        link.SetPath("/");
    }
    // Segment by segment, so that an escaped "/" stays what it is; "." and ".." are resolved.
    Lum::PathEdit path(link);
    for (std::size_t i = 0; i < path.GetCount();) {
        const std::string name = Lum::PathView(path.GetText())[i].GetName();
        if (name != "." && name != "..") {
            path.Replace(i++, name);
            continue;
        }
        path.Remove(i);
        if (name == ".." && i > 0) {
            path.Remove(--i);
        }
        if (i == path.GetCount()) {
            path.Append("");
        }
    }
    path.PutInto(link);
    return link.ToStringUTF8Escaped();
}

}  // namespace

int main(int argc, char** argv) {
    const Lum::URI page(argc > 1 ? argv[1] : "http://localhost/");
    std::map<std::string, int> inside, outside;
    for (std::string href; std::getline(std::cin, href);) {
        if (const Lum::URIProblem problem = Lum::ExplainURI(href); problem.code != Lum::URIProblemCode::kValid) {
            std::cout << "no link: " << href << '\n' << std::string(problem.offset + 9, ' ') << "^\n";
            continue;
        }
        Lum::URI link(page);
        link.ChDir(href, false);
        if (!link.IsHierarchical() || !(link.IsOfType("http") || link.IsOfType("https"))) {
            continue;  // Mail, scripts.
        }
        auto& list = link.GetAuthority() == page.GetAuthority() ? inside : outside;
        ++list[Normalized(link)];
    }
    for (const auto* list : {&inside, &outside}) {
        std::cout << (list == &inside ? "here:\n" : "elsewhere:\n");
        for (const auto& [link, count] : *list) {
            std::cout << "  " << link << (count > 1 ? "  x" + std::to_string(count) : "") << '\n';
        }
    }
}
