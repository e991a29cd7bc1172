// Picks the function that converts between UTF-16 and an encoding that has code of its own.
#include "Platform/TextEncoding/OwnConverters.h"

#include <bit>

#include "Platform/TextEncoding/Latin.h"
#include "Platform/TextEncoding/Utf16.h"
#include "Platform/TextEncoding/Utf8.h"

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

constexpr TextEncoding kUtf8 = Unicode(kUnicodeUTF8Format);
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
    {kUtf16, CopyUtf16<false, false>, CopyUtf16<false, false>},
    {kNamedHostUtf16, CopyUtf16<false, false>, CopyUtf16<false, false>},
    {kSwappedUtf16, CopyUtf16<true, false>, CopyUtf16<false, true>},
    {kTextEncodingISOLatin1, LatinToUtf16<0x100>, Utf16ToLatin<0x100>},
    {kTextEncodingUS_ASCII, LatinToUtf16<0x80>, Utf16ToLatin<0x80>},
};

OwnEncoding FindOwnEncoding(TextEncoding encoding) {
    if (encoding == kUtf8) {
        const Utf8Functions functions = FastestUtf8();
        return {kUtf8, functions.toUtf16, functions.fromUtf16};
    }
    for (const OwnEncoding& own : kOwnEncodings) {
        if (own.encoding == encoding) {
            return own;
        }
    }
    return {encoding, nullptr, nullptr};
}

}  // namespace

std::unique_ptr<Converter> MakeOwnConverter(TextEncoding from, TextEncoding to) {
    ConvertFunction function = nullptr;
    if (to == kUtf16) {
        function = FindOwnEncoding(from).toUtf16;
    } else if (from == kUtf16) {
        function = FindOwnEncoding(to).fromUtf16;
    }
    return function != nullptr ? std::make_unique<StatelessConverter>(function) : nullptr;
}

}  // namespace TextConversion
