// Host set-up: what the operating system would know, on hosts without its services.
//
// To be called before other threads use the library; may be called from static initialisers.
#pragma once

#include <string>

#include <Lum/Export.h>

namespace Lum::Platform {

/// Names the volume that the POSIX path "/" is on in colon-separated paths, in UTF-8; "Macintosh HD"
/// without a call. Every other volume is the folder of its name below "/Volumes". A name is not empty
/// and holds neither ":" nor NUL; with any other, paths of that volume are not read back.
LUM_API void SetStartupVolumeName(const std::string& utf8);

}  // namespace Lum::Platform
