// Calls the text encoding utilities, whose names are Pascal strings: a length byte and at most 255 more.
#include "Mac/TextEncodings.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "Platform/TextEncoding/EncodingNames.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace Mac {
namespace {

using PascalString = std::array<unsigned char, 256>;

std::uint32_t UnicodeEncoding(std::uint32_t format) noexcept {
    return CreateTextEncoding(kTextEncodingUnicodeDefault, 0, format);
}

}  // namespace

std::uint32_t UTF8Encoding() noexcept { return UnicodeEncoding(kUnicodeUTF8Format); }
std::uint32_t UTF16Encoding() noexcept { return UnicodeEncoding(kUnicode16BitFormat); }
std::uint32_t UTF7Encoding() noexcept { return UnicodeEncoding(kUnicodeUTF7Format); }

std::uint32_t EncodingOfInternetName(std::string_view name) noexcept {
    PascalString pascal;
    const std::size_t size = std::min<std::size_t>(name.size(), pascal.size() - 1);
    pascal[0] = static_cast<unsigned char>(size);
    std::copy_n(name.data(), size, pascal.data() + 1);
    // The status tells no more than the number does: it stays as it is where the name is unknown.
    TextEncoding encoding = kUnknownEncoding;
    TECGetTextEncodingFromInternetName(&encoding, pascal.data());
    return encoding;
}

std::string InternetNameOf(std::uint32_t encoding) {
    PascalString pascal;
    pascal[0] = 0;
    TECGetTextEncodingInternetName(encoding, pascal.data());
    return {reinterpret_cast<const char*>(pascal.data() + 1), pascal[0]};
}

std::vector<NamedEncoding> NamedEncodings() {
    std::vector<NamedEncoding> encodings;
    for (const TextConversion::EncodingRow& row : TextConversion::EncodingRows()) {
        encodings.push_back({row.encoding, row.names});
    }
    return encodings;
}

std::uint32_t SystemScriptEncoding() noexcept {
    TextEncoding encoding = 0;
    const OSStatus status =
        UpgradeScriptInfoToTextEncoding(smSystemScript, kTextLanguageDontCare, kTextRegionDontCare, nullptr, &encoding);
    return status == noErr ? encoding : UTF8Encoding();
}

bool IsJapanese(std::uint32_t encoding) noexcept {
    LangCode language = 0;
    RevertTextEncodingToScriptInfo(encoding, nullptr, &language, nullptr);
    return language == langJapanese;
}

}  // namespace Mac
