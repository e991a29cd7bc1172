// Calls the text encoding utilities, whose names are Pascal strings: a length byte and at most 255 more.
#include "Mac/TextEncodings.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

#include "Platform/TextEncoding/EncodingNames.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"

using namespace Lum::Internal;

namespace Lum::Internal::Mac {
namespace {

using PascalString = std::array<unsigned char, 256>;

TextEncoding UnicodeEncoding(TextEncoding format) noexcept {
    return CreateTextEncoding(kTextEncodingUnicodeDefault, 0, format);
}

}  // namespace

TextEncoding UTF8Encoding() noexcept { return UnicodeEncoding(kUnicodeUTF8Format); }
TextEncoding UTF16Encoding() noexcept { return UnicodeEncoding(kUnicode16BitFormat); }
TextEncoding WithoutHostOrder(TextEncoding encoding) noexcept {
    constexpr TextEncodingFormat order =
        std::endian::native == std::endian::little ? kUnicodeUTF16LEFormat : kUnicodeUTF16BEFormat;
    return encoding == UnicodeEncoding(order) ? UTF16Encoding() : encoding;
}
TextEncoding UTF7Encoding() noexcept { return UnicodeEncoding(kUnicodeUTF7Format); }

TextEncoding EncodingOfInternetName(std::string_view name) noexcept {
    PascalString pascal;
    const std::size_t size = std::min<std::size_t>(name.size(), pascal.size() - 1);
    pascal[0] = static_cast<unsigned char>(size);
    std::copy_n(name.data(), size, pascal.data() + 1);
    // The status is not needed: for an unknown name the number is kUnknownEncoding.
    TextEncoding encoding = kUnknownEncoding;
    TECGetTextEncodingFromInternetName(&encoding, pascal.data());
    return encoding;
}

std::string InternetNameOf(TextEncoding encoding) {
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

TextEncoding SystemScriptEncoding() {
    TextEncoding encoding = 0;
    const OSStatus status =
        UpgradeScriptInfoToTextEncoding(smSystemScript, kTextLanguageDontCare, kTextRegionDontCare, nullptr, &encoding);
    return status == noErr ? encoding : UTF8Encoding();
}

bool IsJapanese(TextEncoding encoding) noexcept {
    LangCode language = 0;
    RevertTextEncodingToScriptInfo(encoding, nullptr, &language, nullptr);
    return language == langJapanese;
}

}  // namespace Lum::Internal::Mac
