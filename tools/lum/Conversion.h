// What the subcommands that take an encoding share: its name checked, and the reason where a conversion fails.
#pragma once

#include <string>

#include <Lum/Transcoder.h>

namespace Tool {

/// "" for the name of an encoding that has a converter, otherwise what is wrong with it.
std::string CheckEncoding(const std::string& name);

/// What ended a conversion, in a word and an explanation; "" where nothing but the text's end did.
std::string Explain(Lum::ConversionStatus status, const std::string& from, const std::string& to);

}  // namespace Tool
