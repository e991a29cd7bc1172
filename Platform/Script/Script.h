// The script services for hosts that do not have them: which script the system writes in, and which
// bytes begin a character of two bytes there.
//
// Names, arguments and constants are those of the services, but not the C linkage. The system's script
// follows from the locale (see HostLocale.h). Any thread may ask. Not more is offered than is called.
#pragma once

using ScriptCode = short;
using CharByteTable = char[256];

constexpr ScriptCode smRoman = 0;           // NOLINT: the services' name
constexpr ScriptCode smJapanese = 1;        // NOLINT: the services' name
constexpr ScriptCode smTradChinese = 2;     // NOLINT: the services' name
constexpr ScriptCode smKorean = 3;          // NOLINT: the services' name
constexpr ScriptCode smSimpChinese = 25;    // NOLINT: the services' name
constexpr ScriptCode smSystemScript = -1;   // NOLINT: the services' name
constexpr ScriptCode smCurrentScript = -2;  // NOLINT: the services' name

constexpr short smSysScript = 18;   // NOLINT: the services' name
constexpr short smDoubleByte = 36;  // NOLINT: the services' name

/// Answers `smSysScript` with the system's script and `smDoubleByte` with 1 where that has characters
/// of two bytes, else 0; every other selector with 0.
long GetScriptManagerVariable(short selector);

/// Sets `table` to 1 for each byte that begins a character of two bytes in `script`, to 0 for the
/// others, and returns 1. `smSystemScript` and `smCurrentScript` are the system's.
unsigned char FillParseTable(CharByteTable table, ScriptCode script);
