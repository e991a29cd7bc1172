// The operations on whole texts: which encodings meet, and what the system's own are called.
#include <cstdint>
#include <string>
#include <string_view>

#include <Lum/Transcoder.h>

#include "Mac/TextEncodings.h"
#include "Source/Base/Ascii.h"
#include "Source/Transcoder/Conversion.h"
#include "Source/Transcoder/ConverterCache.h"

namespace Lum {
namespace {

// The sizes of the pieces show in what a failed conversion gives.
constexpr std::size_t kPieceToUTF16 = 1024;
constexpr std::size_t kPieceFromUTF16 = 512;

std::string_view BytesOf(const std::u16string& text) noexcept {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

TextEncoding DefaultChannelCharSetID() { return EncodingToCharSetID(Transcoder::DefaultChannelEncoding()); }

}  // namespace

TextEncoding EncodingToCharSetID(const std::string& name) {
    if (EqualIgnoringAsciiCase(name, "utf-8")) {
        return Mac::UTF8Encoding();
    }
    if (EqualIgnoringAsciiCase(name, "utf-16") || EqualIgnoringAsciiCase(name, "unicode")) {
        return Mac::UTF16Encoding();
    }
    if (EqualIgnoringAsciiCase(name, "utf-7")) {
        return Mac::UTF7Encoding();
    }
    return Mac::EncodingOfInternetName(name);
}

std::u16string CharSetToWide(const std::string& bytes, TextEncoding from) {
    const auto cached = CachedConverter::ToUTF16(from);
    return cached ? ConvertText<char16_t, kPieceToUTF16>(cached.Converter(), bytes) : std::u16string();
}

std::string WideToCharSet(const std::u16string& text, TextEncoding to) {
    const auto cached = CachedConverter::FromUTF16(to);
    return cached ? ConvertText<char, kPieceFromUTF16>(cached.Converter(), BytesOf(text)) : std::string();
}

bool Transcoder::IsValidEncoding(const std::string& name) {
    // Not a question to the host: a name that it does not know is no fault.
    static_cast<void>(EncodingToCharSetID(name));
    return true;
}

std::string Transcoder::DefaultChannelEncoding() {
    return Mac::IsJapanese(Mac::SystemScriptEncoding()) ? "shift_jis" : "iso-8859-1";
}

std::string Transcoder::PlatformEncoding() {
    const std::uint32_t encoding = Mac::SystemScriptEncoding();
    if (encoding == Mac::UTF8Encoding()) {
        return "utf-8";
    }
    if (encoding == Mac::UTF16Encoding()) {
        return "utf-16";
    }
    if (encoding == Mac::UTF7Encoding()) {
        return "utf-7";
    }
    return Mac::InternetNameOf(encoding);
}

std::u16string Transcoder::EncodingToUTF16(const std::string& bytes, const std::string& encoding) {
    return CharSetToWide(bytes, EncodingToCharSetID(encoding));
}
std::u16string Transcoder::UTF8ToUTF16(const std::string& bytes) { return CharSetToWide(bytes, Mac::UTF8Encoding()); }
std::u16string Transcoder::asUTF16(const std::string& bytes) { return UTF8ToUTF16(bytes); }
std::u16string Transcoder::filesytemToUTF16(const std::string& bytes) {
    return CharSetToWide(bytes, DefaultChannelCharSetID());
}

std::string Transcoder::UTF16ToEncoding(const std::u16string& text, const std::string& encoding) {
    return WideToCharSet(text, EncodingToCharSetID(encoding));
}
std::string Transcoder::UTF16ToUTF8(const std::u16string& text) { return WideToCharSet(text, Mac::UTF8Encoding()); }
std::string Transcoder::asUTF8(const std::u16string& text) { return UTF16ToUTF8(text); }
std::string Transcoder::asFilesystemString(const std::u16string& text) {
    return WideToCharSet(text, DefaultChannelCharSetID());
}

std::string Transcoder::EncodingToUTF8(const std::string& bytes, const std::string& encoding) {
    return UTF16ToUTF8(EncodingToUTF16(bytes, encoding));
}
std::string Transcoder::UTF8ToEncoding(const std::string& bytes, const std::string& encoding) {
    return UTF16ToEncoding(UTF8ToUTF16(bytes), encoding);
}

}  // namespace Lum
