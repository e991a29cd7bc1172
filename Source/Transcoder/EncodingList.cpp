// The encodings that have names, for programs that show them.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/Transcoder.h>

#include "Mac/TextConverter.h"
#include "Mac/TextEncodings.h"

namespace Lum {
namespace {

std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find(' '), text.size());
        words.emplace_back(text.substr(0, size));
        text.remove_prefix(std::min(size + 1, text.size()));
    }
    return words;
}

bool IsConvertible(TextEncoding encoding) {
    const TextEncoding utf16 = Mac::UTF16Encoding();
    return Mac::TextConverter(encoding, utf16) && Mac::TextConverter(utf16, encoding);
}

}  // namespace

std::vector<EncodingInfo> KnownEncodings() {
    std::vector<EncodingInfo> list;
    for (const Mac::NamedEncoding& named : Mac::NamedEncodings()) {
        std::vector<std::string> names = Words(named.names);
        std::string name = names.front();
        names.erase(names.begin());
        list.push_back({named.encoding, std::move(name), std::move(names), IsConvertible(named.encoding)});
    }
    return list;
}

}  // namespace Lum
