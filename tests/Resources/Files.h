// Folders that are removed after the test, and resource files made byte by byte.
#pragma once

#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Files {

/// An empty folder.
class Folder {
public:
    Folder() {
        static std::atomic<int> count{0};
        const std::filesystem::path memory = "/dev/shm";
        m_Path = (is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
                 ("lum-test-" + std::to_string(getpid()) + '-' + std::to_string(count++));
        std::filesystem::create_directories(m_Path);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { std::filesystem::remove_all(m_Path); }

    std::filesystem::path operator/(std::string_view name) const { return m_Path / name; }
    [[nodiscard]] const std::filesystem::path& Path() const { return m_Path; }

private:
    std::filesystem::path m_Path;
};

inline std::filesystem::path Write(const std::filesystem::path& path, std::string_view bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

inline std::string Read(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A big-endian number.
inline std::string Number(std::uint64_t number, int size) {
    std::string bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
        bytes += static_cast<char>(static_cast<unsigned char>(number >> shift));
    }
    return bytes;
}

inline std::uint32_t Code(std::string_view type) {
    return std::accumulate(type.begin(), type.end(), std::uint32_t{0},
                           [](std::uint32_t code, unsigned char c) { return code << 8 | c; });
}

/// A length byte and the text.
inline std::string Pascal(std::string_view text) { return Number(text.size(), 1).append(text); }

/// What an 'STR#' holds.
inline std::string List(std::initializer_list<std::string_view> texts) {
    std::string bytes = Number(texts.size(), 2);
    for (const std::string_view text : texts) {
        bytes += Pascal(text);
    }
    return bytes;
}

struct Row {
    std::string type;
    int id;
    std::string bytes;
    std::string name = {};  ///< none if empty
    int attributes = 0;
};

/// A resource file: rows of one type stand together.
inline std::string Fork(const std::vector<Row>& rows) {
    std::vector<std::pair<std::string, std::string>> types;  // a type and its references
    std::string data, names;
    for (const Row& row : rows) {
        if (types.empty() || types.back().first != row.type) {
            types.emplace_back(row.type, "");
        }
        types.back().second += Number(static_cast<std::uint16_t>(row.id), 2) +
                               Number(row.name.empty() ? 0xFFFF : names.size(), 2) +
                               Number(static_cast<unsigned>(row.attributes), 1) + Number(data.size(), 3) + Number(0, 4);
        names += row.name.empty() ? std::string() : Pascal(row.name);
        data += Number(row.bytes.size(), 4) + row.bytes;
    }
    std::string list = Number(types.size() - 1, 2), references;
    for (const auto& [type, entries] : types) {
        list += type + Number(entries.size() / 12 - 1, 2) + Number(2 + 8 * types.size() + references.size(), 2);
        references += entries;
    }
    list += references;
    const std::string header = Number(256, 4) + Number(256 + data.size(), 4) + Number(data.size(), 4) +
                               Number(28 + list.size() + names.size(), 4);
    return header + std::string(240, '\0') + data + header + std::string(8, '\0') + Number(28, 2) +
           Number(28 + list.size(), 2) + list + names;
}

}  // namespace Files
