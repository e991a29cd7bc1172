// What the subcommands that take an encoding share: its name checked, a text converted with the reason
// where that fails.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <Lum/Transcoder.h>

namespace Tool {

/// "" for the name of an encoding that has a converter, otherwise what is wrong with it.
std::string CheckEncoding(const std::string& name);

/// What ended a conversion, in a word and an explanation; "" where nothing but the text's end did.
std::string Explain(Lum::ConversionStatus status, const std::string& from, const std::string& to);

/// A text, converted up to what cannot be.
struct ConvertedText {
    std::string text;
    std::size_t read = 0;  ///< Bytes of the source, all of them or up to the element that is bad.
    std::string problem;   ///< As Explain says it.
};

ConvertedText ConvertText(std::string_view text, const std::string& from, const std::string& to);

}  // namespace Tool
