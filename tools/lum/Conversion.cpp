// Says in words how a conversion went.
#include "tools/lum/Conversion.h"

namespace Tool {

using Lum::ConversionStatus;

std::string CheckEncoding(const std::string& name) {
    if (Lum::EncodingToCharSetID(name) == 0xFFFF) {
        return "no encoding \"" + name + "\", see lum encodings";
    }
    const bool hasConverter = Lum::ConvertText({}, name, "utf-8").status != ConversionStatus::kNoSuchEncoding;
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

}  // namespace Tool
