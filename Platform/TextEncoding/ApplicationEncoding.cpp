// The application's encoding: the one that was set, or the code set of the locale in force.
#include <cstdint>

#include <Lum/Platform.h>

#include "Platform/Script/HostLocale.h"
#include "Platform/TextEncoding/EncodingNames.h"
#include "Platform/TextEncoding/TextEncodingConverter.h"

namespace {

// Initialised before any code runs, hence usable from static initialisers.
constinit TextEncoding s_set = TextConversion::kUnknownEncoding;

}  // namespace

TextEncoding GetApplicationTextEncoding() {
    return s_set != TextConversion::kUnknownEncoding ? s_set : HostLocale::Current().codeSet;
}

void Lum::Platform::SetApplicationTextEncoding(std::uint32_t textEncoding) { s_set = textEncoding; }
