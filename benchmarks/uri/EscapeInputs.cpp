// What is escaped and unescaped: mixed text, clean text and short names.
#include <cstddef>
#include <string>
#include <vector>

#include "Inputs.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

constexpr std::size_t kTextCount = 64;
constexpr std::size_t kMixedSize = 268;
constexpr std::size_t kCleanSize = 256;

std::vector<std::string> EscapedTexts(const std::vector<std::string>& texts, std::size_t size = std::string::npos) {
    std::vector<std::string> escaped;
    for (const std::string& text : texts) {
        escaped.push_back(Escaped(text, size));
    }
    return escaped;
}

}  // namespace

std::vector<TextCase> EscapeCases() {
    return {{"uri/escape mixed", MixedTexts(kTextCount, kMixedSize)},
            {"uri/escape clean", CleanTexts(kTextCount, kCleanSize)},
            {"uri/escape short", ShortTexts()}};
}

const char* const kEscapedSet = R"( !"#$%&'()*+,/:;<=>?@[\]^`{|})";

std::vector<TextCase> SetEscapeCases() {
    return {{"uri/escape a set, mixed", MixedTexts(kTextCount, kMixedSize)},
            {"uri/escape a set, clean", CleanTexts(kTextCount, kCleanSize)}};
}

std::vector<TextCase> UnescapeCases() {
    return {{"uri/unescape mixed", EscapedTexts(MixedTexts(kTextCount, kMixedSize), kMixedSize)},
            {"uri/unescape clean", CleanTexts(kTextCount, kCleanSize)},
            {"uri/unescape short", EscapedTexts(ShortTexts())}};
}

}  // namespace Bench::Uri
