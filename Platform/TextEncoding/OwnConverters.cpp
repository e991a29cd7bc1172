// Picks the function that converts between UTF-16 and an encoding that has code of its own.
#include "Platform/TextEncoding/OwnConverters.h"

#include <bit>

#include "Platform/TextEncoding/LatinPlain.h"
#include "Platform/TextEncoding/Utf16Plain.h"
#include "Platform/TextEncoding/Utf8Plain.h"

namespace TextConversion {

namespace {

/// None of these encodings has a state.
class StatelessConverter final : public Converter {
public:
    explicit StatelessConverter(ConvertFunction function) noexcept : m_Function(function) {}

    Progress Convert(Input input, Output output) override { return m_Function(input, output); }
    Progress Flush(Output /*output*/) override { return {noErr, 0, 0}; }
    void Clear() override {}

private:
    ConvertFunction m_Function;
};

constexpr TextEncoding Unicode(TextEncodingFormat format) {
    return CreateTextEncoding(kTextEncodingUnicodeDefault, kTextEncodingDefaultVariant, format);
}

constexpr TextEncoding kUtf16 = Unicode(kUnicode16BitFormat);
constexpr TextEncoding kSwappedUtf16 =
    Unicode(std::endian::native == std::endian::little ? kUnicodeUTF16BEFormat : kUnicodeUTF16LEFormat);
constexpr TextEncoding kNamedHostUtf16 =
    Unicode(std::endian::native == std::endian::little ? kUnicodeUTF16LEFormat : kUnicodeUTF16BEFormat);

struct OwnEncoding {
    TextEncoding encoding;
    ConvertFunction toUtf16;
    ConvertFunction fromUtf16;
};

constexpr OwnEncoding kOwnEncodings[] = {
    {Unicode(kUnicodeUTF8Format), Plain::Utf8ToUtf16, Plain::Utf16ToUtf8},
    {kUtf16, Plain::Utf16ToUtf16, Plain::Utf16ToUtf16},
    {kNamedHostUtf16, Plain::Utf16ToUtf16, Plain::Utf16ToUtf16},
    {kSwappedUtf16, Plain::SwappedToUtf16, Plain::Utf16ToSwapped},
    {kTextEncodingISOLatin1, Plain::LatinToUtf16<0x100>, Plain::Utf16ToLatin<0x100>},
    {kTextEncodingUS_ASCII, Plain::LatinToUtf16<0x80>, Plain::Utf16ToLatin<0x80>},
};

}  // namespace

std::unique_ptr<Converter> MakeOwnConverter(TextEncoding from, TextEncoding to) {
    for (const OwnEncoding& own : kOwnEncodings) {
        if (from == own.encoding && to == kUtf16) {
            return std::make_unique<StatelessConverter>(own.toUtf16);
        }
        if (from == kUtf16 && to == own.encoding) {
            return std::make_unique<StatelessConverter>(own.fromUtf16);
        }
    }
    return nullptr;
}

}  // namespace TextConversion
