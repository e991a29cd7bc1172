// Asks a StreamConverter, which unlike the Transcoder tells where it stopped and why.
#include "tools/lum/Conversion.h"

#include <array>

namespace Tool {

using Lum::ConversionStatus;

std::string CheckEncoding(const std::string& name) {
    if (Lum::EncodingToCharSetID(name) == 0xFFFF) {
        return "no encoding \"" + name + "\", see lum encodings";
    }
    const bool hasConverter =
        Lum::StreamConverter(name, "utf-8").Convert({}, {}).status != ConversionStatus::kNoSuchEncoding;
    return hasConverter ? "" : "no converter for \"" + name + "\", see lum encodings";
}

std::string Explain(ConversionStatus status, const std::string& from, const std::string& to) {
    switch (status) {
        case ConversionStatus::kMalformed:
            return "malformed, not " + from;
        case ConversionStatus::kIncomplete:
            return "incomplete, " + from + " ends within a character";
        case ConversionStatus::kUnmappable:
            return "unmappable, not in " + to;
        default:
            return {};
    }
}

ConvertedText ConvertText(std::string_view text, const std::string& from, const std::string& to) {
    Lum::StreamConverter converter(from, to);
    ConvertedText converted;
    std::array<char, 4096> output;
    const auto take = [&](const Lum::ConversionResult& result) {
        converted.text.append(output.data(), result.written);
        converted.read += result.read;
        return result.status;
    };
    ConversionStatus status = ConversionStatus::kOutputFull;
    while (status == ConversionStatus::kOutputFull) {
        status = take(converter.Convert(text.substr(converted.read), output));
    }
    if (status == ConversionStatus::kDone) {
        status = take(converter.Finish(output));
    }
    converted.problem = Explain(status, from, to);
    return converted;
}

}  // namespace Tool
