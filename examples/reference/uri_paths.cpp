// Files: the names in a path, its segments, and paths of three systems.
#include <iostream>
#include <string>
#include <vector>

#include <Lum/Platform.h>
#include <Lum/URI.h>

namespace {

// A file manager's columns.
void Names() {
    Lum::URI uri("http://h/photos/summer%202008/beach.tar.gz");
    std::cout << uri.GetFilename(false) << " | " << uri.GetFilename(true) << " | " << uri.GetExtension(true) << " | "
              << uri.GetExtension(false) << '\n';
    while (!static_cast<const std::string&>(uri.GetLastPathComponent()).empty()) {
        const auto name = uri.RemoveLastPathComponent();
        std::cout << name << " is in " << uri << '\n';
    }
}

// Segments without what stands twice between them.
void Segments() {
    std::vector<std::string> segments;
    bool leading = false, trailing = false;
    Lum::URI::SplitPath("/a//b/c/", segments, leading, trailing);
    segments.erase(segments.begin() + 1);
    std::cout << Lum::URI::JoinPath(segments, leading, trailing) << '\n';
}

// One link, written down on three systems.
void LocalPaths() {
    Lum::Platform::SetStartupVolumeName("Disk");
    Lum::URI uri;
    uri.LocalPathToURIMac("Disk:My Files:a/b");
    std::cout << uri << ": " << uri.ToLocalPathMac() << " | " << uri.ToLocalPathUnix() << " | " << uri.ToLocalPathWin()
              << '\n';
    uri.LocalPathToURIWin("\\\\server\\share\\x");
    std::cout << uri << ": " << uri.ToLocalPathWin() << '\n';
    uri.LocalPathToURIUnix("/home/me/50%");
    std::cout << uri << '\n';
    uri.LocalPathToURI("Disk:a");  // In the style that the library was built for, here with colons.
    std::cout << uri << ": " << uri.ToLocalPath() << '\n';
}

}  // namespace

int main() {
    Names();
    Segments();
    LocalPaths();
}
