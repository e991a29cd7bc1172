// The texts that cases work on: lists from files, and mixed or clean text of a given size.
//
// What is made here is made without any of the libraries measured, so that none of them decides what
// the others are given.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Bench {

/// The lines of `text` that are not empty, without line ends and without a leading byte order mark.
[[nodiscard]] std::vector<std::string> Lines(std::string_view text);
/// The lines of a file; throws std::runtime_error if it cannot be read or has none.
[[nodiscard]] std::vector<std::string> LinesOfFile(const std::string& path);

/// `count` different texts of `size` bytes: prose with spaces, delimiters and letters beyond ASCII, as
/// whole UTF-8 characters.
[[nodiscard]] std::vector<std::string> MixedTexts(std::size_t count, std::size_t size);
/// The same of letters, digits and "-._~" only.
[[nodiscard]] std::vector<std::string> CleanTexts(std::size_t count, std::size_t size);
/// 64 different texts of 11 to 13 bytes, each two words and a space.
[[nodiscard]] std::vector<std::string> ShortTexts();

/// `text` with an escape for every byte but letters, digits and "-._~", cut to at most `size` bytes
/// before an escape; letters fill up what the cut leaves.
[[nodiscard]] std::string Escaped(std::string_view text, std::size_t size = std::string_view::npos);

/// `count` of `items`, spread evenly; all of them where there are no more.
template <class Item>
[[nodiscard]] std::vector<Item> Spread(const std::vector<Item>& items, std::size_t count) {
    if (items.size() <= count) {
        return items;
    }
    std::vector<Item> spread;
    for (std::size_t i = 0; i < count; ++i) {
        spread.push_back(items[i * items.size() / count]);
    }
    return spread;
}

}  // namespace Bench
