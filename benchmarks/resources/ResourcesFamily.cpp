// Puts the resources family together: its strings, its folder, its goals.
#include "resources/ResourcesFamily.h"

#include <unistd.h>

#include <algorithm>
#include <random>
#include <tuple>

#include "Family.h"

namespace Bench::Resources {
namespace {

namespace fs = std::filesystem;

/// The folder, which goes at the end.
const fs::path& Folder() {
    static const struct Made {
        fs::path path = fs::temp_directory_path() / ("lum-bench-" + std::to_string(getpid()));
        Made() { fs::create_directories(path / "files"); }
        Made(const Made&) = delete;
        Made& operator=(const Made&) = delete;
        ~Made() {
            std::error_code ignored;
            fs::remove_all(path, ignored);
        }
    } made;
    return made.path;
}

Inputs MakeInputs() {
    constexpr unsigned int first = 1000, count = 2000, step = 20;
    Inputs inputs;
    inputs.folder = Folder() / "files";
    for (unsigned int number = first; number < first + count; ++number) {
        const std::string key = std::to_string(number);
        inputs.all.push_back({number, key, "Die " + key + ". Zeichenkette für Menüs"});
    }
    inputs.scattered = inputs.all;
    std::mt19937 random(1);
    std::shuffle(inputs.scattered.begin(), inputs.scattered.end(), random);
    // Odd numbers less than 64 apart have slots of their own.
    for (unsigned int i = 1; i < 64; i += step / 10) {
        inputs.repeated.push_back(inputs.all[i]);
    }
    return inputs;
}

void AddCases() {
    static const Inputs inputs = MakeInputs();
    std::sort(Subjects().begin(), Subjects().end(), [](const Subject& a, const Subject& b) {
        return std::tuple(a.name != kMeasured, a.name) < std::tuple(b.name != kMeasured, b.name);
    });
    for (const Subject& subject : Subjects()) {
        subject.addCases(subject.name, inputs);
    }
}

const AddFamily add{
    {"resources",
     [](CLI::App&) {},
     AddCases,
     {{kRepeated, 1, kBestPeer}, {kScattered, 2, kBestPeer}, {kOpen, 5, kBestPeer}},
     [] {
         return std::vector<std::string>{
             "resources: 2,000 strings by number. \"repeated\" goes through 32 of them, which Lum keeps; "
             "\"scattered\" through all. Lum's answer is a string of its own, the peers' point into "
             "their files."};
     }}};

}  // namespace

std::vector<Subject>& Subjects() {
    static std::vector<Subject> subjects;
    return subjects;
}

std::string Number(std::uint64_t number, int size) {
    std::string bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
        bytes += static_cast<char>(static_cast<unsigned char>(number >> shift));
    }
    return bytes;
}

fs::path FreshPath(const Inputs& inputs) {
    static int count = 0;
    fs::path link = Folder() / std::to_string(count++);
    fs::create_directory_symlink(inputs.folder, link);
    return link;
}

}  // namespace Bench::Resources
