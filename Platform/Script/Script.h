// The script services for hosts that do not have them: the script of the system, and which bytes begin a
// character of two bytes in a script.
//
// Names, arguments and constants are those of the services, but not the C linkage. Only what the library
// calls is here. The system's script follows from the language and territory of the current locale. Any
// thread may call.
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

/// For `smSysScript` the system's script; for `smDoubleByte` 1 if that script has characters of two bytes,
/// otherwise 0; for every other selector 0.
long GetScriptManagerVariable(short selector);

/// Sets `table` to 1 for each byte that begins a character of two bytes in `script` and to 0 for the other
/// bytes, and returns 1. `smSystemScript` and `smCurrentScript` mean the system's script.
unsigned char FillParseTable(CharByteTable table, ScriptCode script);
