// Encodings by name, the system's own encodings, and the conversion of whole texts without a report.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Lum/Transcoder.h>

#include "Mac/TextConverter.h"
#include "Mac/TextEncodings.h"
#include "Source/Base/Ascii.h"
#include "Source/Transcoder/ConverterCache.h"
#include "Source/Transcoder/ResizeUncleared.h"
#include "Source/Transcoder/Utf8Text.h"

namespace Lum {

using namespace Internal;

namespace {

// Sizes in bytes of the blocks that a text is converted in. They are visible in the result of a conversion
// that fails.
constexpr std::size_t kBlockToUTF16 = 1024;
constexpr std::size_t kBlockFromUTF16 = 512;

/// What no string can hold is a failed allocation.
template <class Unit>
void Append(std::basic_string<Unit>& text, const Unit* units, std::size_t bytes) {
    if (bytes / sizeof(Unit) > text.max_size() - text.size()) {
        throw std::bad_alloc();
    }
    text.append(units, bytes / sizeof(Unit));
}

/// Converts `input` in blocks of at most `kBlockBytes` bytes of output. This is what a conversion gives, also
/// one that fails.
template <class Unit, std::size_t kBlockBytes>
std::basic_string<Unit> ConvertInBlocks(Mac::TextConverter& converter, std::string_view input) {
    std::array<Unit, kBlockBytes / sizeof(Unit)> block;
    const std::span<char> output(reinterpret_cast<char*>(block.data()), kBlockBytes);
    std::basic_string<Unit> result;
    while (!input.empty()) {
        const ConversionResult step = converter.Convert(input, output);
        input.remove_prefix(step.read);
        Append(result, block.data(), step.written);
        const bool canGoOn = step.status == ConversionStatus::kDone || step.status == ConversionStatus::kOutputFull;
        // A service that neither reads nor writes would make this loop endless.
        if (!canGoOn || (step.read == 0 && step.written == 0)) {
            // Compatibility: callers rely on the last block being in the result of a failed conversion twice.
            Append(result, block.data(), step.written);
            return result;
        }
    }
    Append(result, block.data(), converter.Flush(output).written);
    return result;
}

/// Converts `input` with `convert`, and sets `isWhole` to whether all of it could be converted. One block goes by way
/// of the stack, so that a short text costs one allocation of its size; it also shows how long the rest will be,
/// which is converted into the result itself.
template <class Unit, std::size_t kBlockBytes, class Convert>
std::basic_string<Unit> ConvertWhole(const Convert& convert, std::string_view input, bool& isWhole) {
    std::array<Unit, kBlockBytes / sizeof(Unit)> block;
    ConversionResult step = convert(input, {reinterpret_cast<char*>(block.data()), kBlockBytes});
    std::size_t read = step.read;
    std::basic_string<Unit> result(block.data(), step.written / sizeof(Unit));
    while (step.status == ConversionStatus::kOutputFull && step.written != 0) {
        const std::size_t before = result.size();
        // The rest needs as much in proportion as what is converted, or a little more.
        const std::uint64_t rest = std::uint64_t{input.size() - read} * before / (read + 1);
        const std::uint64_t size = before + rest + rest / 16 + block.size();
        if (size > result.max_size()) {
            throw std::bad_alloc();
        }
        ResizeUncleared(result, static_cast<std::size_t>(size));
        Unit* const end = result.data() + before;
        step = convert(input.substr(read), {reinterpret_cast<char*>(end), (result.size() - before) * sizeof(Unit)});
        read += step.read;
        result.resize(before + step.written / sizeof(Unit));
    }
    isWhole = step.status == ConversionStatus::kDone && read == input.size();
    return result;
}

/// Gives what ConvertInBlocks gives.
template <class Unit, std::size_t kBlockBytes>
std::basic_string<Unit> ConvertWhole(const CachedConverter& cached, std::string_view input) {
    if (!cached) {
        return {};
    }
    Mac::TextConverter& converter = cached.Converter();
    bool isWhole = false;
    auto result = ConvertWhole<Unit, kBlockBytes>(
        [&](std::string_view rest, std::span<char> output) { return converter.Convert(rest, output); }, input, isWhole);
    if (!isWhole) {
        converter.Clear();
        return ConvertInBlocks<Unit, kBlockBytes>(converter, input);
    }
    std::array<Unit, kBlockBytes / sizeof(Unit)> block;
    Append(result, block.data(), converter.Flush({reinterpret_cast<char*>(block.data()), kBlockBytes}).written);
    return result;
}

std::string_view BytesOf(const std::u16string& text) noexcept {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

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

std::u16string CharSetToWide(const std::string& bytes, TextEncoding from) {
    if (from == Mac::UTF8Encoding()) {
        bool isWhole = false;
        std::u16string text = ConvertWhole<char16_t, kBlockToUTF16>(Internal::UTF8ToUTF16, bytes, isWhole);
        if (isWhole) {
            return text;
        }
    }
    return ConvertWhole<char16_t, kBlockToUTF16>(CachedConverter::ToUTF16(from), bytes);
}

std::string WideToCharSet(const std::u16string& text, TextEncoding to) {
    if (to == Mac::UTF8Encoding()) {
        bool isWhole = false;
        std::string bytes = ConvertWhole<char, kBlockFromUTF16>(Internal::UTF16ToUTF8, BytesOf(text), isWhole);
        if (isWhole) {
            return bytes;
        }
    }
    return ConvertWhole<char, kBlockFromUTF16>(CachedConverter::FromUTF16(to), BytesOf(text));
}

bool Transcoder::IsValidEncoding(const std::string& name) {
    // Compatibility: callers rely on the answer true for every name, known or not.
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
