// Runs a property as an ordinary test: over its seeds, and over texts that are made from them by rule.
//
// Usage: property-NAME COUNT PATH...
// COUNT is how many texts are made. A path is a folder of seeds, each file one; a .tsv file, whose first
// column holds seeds; or a .dict file, whose entries are put into the texts. An input that breaks the
// property is left in the file "failed-input" and shown.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Fuzz.h"
#include "tests/Generated.h"
#include "tests/Resources/Files.h"

namespace {

std::vector<std::string> seeds, words;
std::string current;

/// The text of a dictionary's entry, with \\, \" and \xHH.
std::string Unquoted(std::string_view quoted) {
    std::string text;
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] == '\\' && quoted.at(++i) == 'x') {
            text += static_cast<char>(std::stoi(std::string(quoted.substr(i + 1, 2)), nullptr, 16));
            i += 2;
        } else {
            text += quoted[i];
        }
    }
    return text;
}

void AddPath(const std::filesystem::path& path) {
    if (std::filesystem::is_directory(path)) {
        std::vector<std::filesystem::path> files(std::filesystem::directory_iterator(path), {});
        std::sort(files.begin(), files.end());
        std::transform(files.begin(), files.end(), std::back_inserter(seeds), Files::Read);
        return;
    }
    std::ifstream stream(path);
    for (std::string line; std::getline(stream, line);) {
        if (path.extension() == ".tsv") {
            seeds.push_back(line.substr(0, line.find('\t')));
        } else if (const auto first = line.find('"'); first != std::string::npos && line[0] != '#') {
            words.push_back(Unquoted(std::string_view(line).substr(first + 1, line.rfind('"') - first - 1)));
        }
    }
}

/// One change: a byte, a piece more, a piece less, a piece of another seed, a word of the dictionary.
void Mutate(std::string& text, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    const std::size_t at = below(text.size() + 1);
    const std::size_t size = 1 + below(below(8) == 0 ? 64 : 4);
    const std::string& other = seeds[below(seeds.size())];
    const std::string word = words.empty() ? "\xFF" : words[below(words.size())];
    const std::string pieces[] = {"", std::string(1, static_cast<char>(below(256))), word,
                                  text.substr(below(text.size() + 1), size),
                                  other.substr(below(other.size() + 1), 4 * size)};
    text.replace(at, below(2) == 0 ? 0 : size, pieces[below(std::size(pieces))]);
    text.resize(std::min<std::size_t>(text.size(), 4096));
}

void Call() {
    // A block of its exact size, so that a sanitizer sees a byte read too far.
    const Generated::ExactBlock<std::uint8_t> block(current);
    LLVMFuzzerTestOneInput(block.begin(), block.size());
}

extern "C" void ShowInput(int /*signal*/) {
    std::ofstream("failed-input", std::ios::binary) << current;
    std::cerr << "input of " << current.size() << " bytes, in failed-input: " << std::quoted(current) << std::endl;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::cerr << "usage: " << arguments[0] << " COUNT PATH...\n";
        return 2;
    }
    std::for_each(arguments + 2, arguments + count, AddPath);
    std::signal(SIGABRT, ShowInput);
    std::mt19937 random(1);
    // A property without seeds reads its input as a row of choices: any bytes will do.
    for (std::size_t i = 0; seeds.size() < 16 && arguments + 2 == arguments + count; ++i) {
        seeds.emplace_back(32 * i, '\0');
        std::generate(seeds.back().begin(), seeds.back().end(), [&] { return static_cast<char>(random()); });
    }
    seeds.emplace_back();
    const std::size_t made = std::stoul(arguments[1]);
    for (std::size_t i = 0; i < seeds.size() + made; ++i) {
        // Each seed as it is, and then texts with changes.
        current = seeds[i < seeds.size() ? i : random() % seeds.size()];
        for (auto changes = i < seeds.size() ? 0 : 1 + random() % 8; changes > 0; --changes) {
            Mutate(current, random);
        }
        Call();
    }
    std::cout << seeds.size() << " seeds and " << made << " texts made from them: the property holds\n";
    return 0;
}
