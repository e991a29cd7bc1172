// The functions of the services: they find the converter between two encodings and call it.
#include "Platform/TextEncoding/TextEncodingConverter.h"

#include <memory>

#include "Platform/TextEncoding/Converter.h"
#include "Platform/TextEncoding/EncodingNames.h"

using namespace Lum::Internal;

namespace {

/// The version bits choose between versions of a table. There is one version of each here.
constexpr TextEncoding WithoutVersion(TextEncoding encoding) { return encoding & 0x3FFFFFFF; }

}  // namespace

namespace Lum::Internal::TextConversion {

std::unique_ptr<Converter> MakeConverter(TextEncoding from, TextEncoding to) {
    from = WithoutVersion(from);
    to = WithoutVersion(to);
    if (auto own = MakeOwnConverter(from, to)) {
        return own;
    }
    const bool isToUtf16 = to == kTextEncodingUnicodeDefault;
    if (!isToUtf16 && from != kTextEncodingUnicodeDefault) {
        return nullptr;
    }
    const EncodingRow* const other = FindEncoding(isToUtf16 ? from : to);
    if (other == nullptr || other->converter.empty()) {
        return nullptr;
    }
    return isToUtf16 ? MakeIcuToUtf16(other->converter) : MakeIcuFromUtf16(other->converter);
}

}  // namespace Lum::Internal::TextConversion

OSStatus TECCreateConverter(TECObjectRef* converter, TextEncoding from, TextEncoding to) {
    *converter = TextConversion::MakeConverter(from, to).release();
    return *converter != nullptr ? noErr : kTECNoConversionPathErr;
}

OSStatus TECConvertText(TECObjectRef converter, ConstTextPtr input, ByteCount inputLength, ByteCount* inputUsed,
                        TextPtr output, ByteCount outputLength, ByteCount* outputUsed) {
    const TextConversion::Step step = converter->Convert({input, inputLength}, {output, outputLength});
    *inputUsed = step.read;
    *outputUsed = step.written;
    return step.status;
}

OSStatus TECFlushText(TECObjectRef converter, TextPtr output, ByteCount outputLength, ByteCount* outputUsed) {
    const TextConversion::Step step = converter->Flush({output, outputLength});
    *outputUsed = step.written;
    return step.status;
}

OSStatus TECClearConverterContextInfo(TECObjectRef converter) {
    converter->Clear();
    return noErr;
}

OSStatus TECDisposeConverter(TECObjectRef converter) {
    delete converter;
    return noErr;
}
