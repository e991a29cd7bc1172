// Status numbers of more than one family of services.
#pragma once

#include <cstdint>

using OSStatus = std::int32_t;
using OSErr = std::int16_t;

constexpr OSStatus noErr = 0;          // NOLINT: the services' name
constexpr OSStatus paramErr = -50;     // NOLINT: the services' name
constexpr OSStatus memFullErr = -108;  // NOLINT: the services' name
