// Takes a URI apart, edits it, and prints it again.
#include <iostream>

#include <Lum/URI.h>

int main() {
    Lum::URI uri("HTTP://Host/a%20b/c.txt?x=1");
    std::cout << uri.GetAuthority() << "  " << uri.GetPath() << '\n';
    uri.SetPath("/new path/d.txt");
    std::cout << uri << '\n';
    std::cout << (Lum::URI("c:\\dir").IsValidURI() ? "valid" : "not valid") << '\n';
}
