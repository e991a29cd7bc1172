// Conversions of whole texts and of streams, at 1 KB, 32 KB and 1 MB of UTF-8; the figure is for one byte of that.
#include <Lum/Transcoder.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Case.h"
#include "transcoding/TranscodingFamily.h"

namespace Bench::Transcoding {
namespace {

using Lum::Transcoder;

const std::vector<std::size_t> kBytes{1'024, 32'768, 1'048'576};

/// `make` turns a text of UTF-8 into the input of `call`, once.
template <class Make, class Call>
void Add(const std::string& operation, const std::string& text, Make make, Call call) {
    AddGrowthCases("transcoding/bytes of " + operation, kBytes, [&text, make, call](std::size_t size) {
        return [input = make(Slices(text, size, 1).front()), call]() mutable { return call(input); };
    });
}

}  // namespace

void AddGrowth(const std::vector<Script>& scripts) {
    const auto asIs = [](const std::string& utf8) { return utf8; };
    for (const Script& script : scripts) {
        Add(script.name + " to UTF-16", script.text, asIs, Transcoder::UTF8ToUTF16);
        Add(script.name + " from UTF-16", script.text, Widened, Transcoder::UTF16ToUTF8);
        for (const std::string& encoding : script.encodings) {
            const std::string name = script.name + ' ' + encoding;
            // Up to the first character that the encoding lacks, if a text from a file has one.
            const auto encode = [encoding](const std::string& utf8) {
                return Transcoder::UTF8ToEncoding(utf8, encoding);
            };
            const auto widen = [=](const std::string& utf8) {
                return Transcoder::EncodingToUTF16(encode(utf8), encoding);
            };
            Add(name + " to UTF-16", script.text, encode,
                [encoding](const std::string& bytes) { return Transcoder::EncodingToUTF16(bytes, encoding); });
            Add(name + " from UTF-16", script.text, widen,
                [encoding](const std::u16string& wide) { return Transcoder::UTF16ToEncoding(wide, encoding); });
            Add(name + " to UTF-8", script.text, encode,
                [encoding](const std::string& bytes) { return Transcoder::EncodingToUTF8(bytes, encoding); });
            Add(name + ", stream to UTF-8", script.text, encode,
                [encoding, buffer = std::vector<char>(4 << 20)](const std::string& bytes) mutable {
                    Lum::StreamConverter converter(encoding, "utf-8");
                    return converter.Convert(bytes, buffer).written;
                });
        }
    }
}

}  // namespace Bench::Transcoding
