// A file browser without its window: the model of a listing, of a place in it, and of the way back.
//
// Usage: browser START <COMMANDS. Lines of the input that are URIs are the files there are; "ls", "cd REFERENCE", "up"
// and "back" are commands.
#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include <Lum/PathView.h>
#include <Lum/URI.h>

namespace {

class Browser {
public:
    explicit Browser(Lum::URI place) : m_Place(std::move(place)) {}

    void Add(const Lum::URI& file) { m_Files.push_back(file); }

    // Folders first, each once, then files with their types.
    std::vector<std::string> List() const {
        std::vector<std::string> folders, files;
        const std::size_t depth = Lum::PathEdit(m_Place).GetCount();  // The place ends with "/": one segment is empty.
        for (const Lum::URI& file : m_Files) {
            if (file.GetRelation(m_Place, true) != Lum::kRelationChild) {
                continue;
            }
            const Lum::PathView path(file);
            const std::string name = path[depth - 1].GetName();
            if (path.size() > depth) {
                folders.push_back(name + '/');
            } else if (!name.empty()) {
                files.push_back(name + "\t" + static_cast<const std::string&>(file.GetExtension(true)));
            }
        }
        std::sort(folders.begin(), folders.end());
        folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
        std::sort(files.begin(), files.end());
        folders.insert(folders.end(), files.begin(), files.end());
        return folders;
    }

    // Where a reference leads, as typed or clicked; never to another server.
    bool Go(const std::string& reference) {
        Lum::URI next(m_Place);
        next.ChDir(reference, true);
        if (!next.IsDirectory()) {
            next.SetPath(next.GetPath() + '/');
        }
        if (!Lum::URI::CompareAuthority(next.ToString(false), m_Place.ToString(false))) {
            return false;
        }
        m_Way.push_back(std::exchange(m_Place, next));
        return true;
    }
    void Back() {
        if (!m_Way.empty()) {
            m_Place = m_Way.back();
            m_Way.pop_back();
        }
    }
    const Lum::URI& Place() const { return m_Place; }

private:
    Lum::URI m_Place;
    std::vector<Lum::URI> m_Files, m_Way;
};

}  // namespace

int main(int argc, char** argv) {
    Browser browser(Lum::URI(argc > 1 ? argv[1] : "http://localhost/"));
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "ls") {
            for (const std::string& entry : browser.List()) {
                std::cout << "  " << entry << '\n';
            }
        } else if (line == "back") {
            browser.Back();
        } else if (line == "up") {
            browser.Go("..");
        } else if (line.starts_with("cd ")) {
            std::cout << (browser.Go(line.substr(3)) ? "" : "not here: " + line.substr(3) + '\n');
        } else {
            browser.Add(Lum::URI(line));
            continue;
        }
        std::cout << browser.Place().ToString(true) << '\n';
    }
}
