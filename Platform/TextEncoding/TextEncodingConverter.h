// The text encoding services for hosts that do not have them: encodings by number and by Internet name,
// and converters between UTF-16 and the others.
//
// Names, arguments and constants are those of the services, but not the C linkage. Texts are bytes;
// UTF-16 is in the host's byte order, and a byte order mark is text like any other. Any thread may call,
// but one converter serves one thread at a time. Only what the library calls is here.
//
// A TextEncoding packs a base in bits 0 to 15, a variant in 16 to 25, a format in 26 to 29 and a
// version above: UTF-8 is 0x08000100, UTF-16 0x0100, Shift-JIS 0x0A01. Variants have no tables here.
#pragma once

#include <cstdint>

#include "Platform/Script/Script.h"
#include "Platform/Status.h"

using ByteCount = unsigned long;
using TextPtr = unsigned char*;
using ConstTextPtr = const unsigned char*;
/// A length byte and that many bytes of text.
using Str255 = unsigned char[256];
using ConstStr255Param = const unsigned char*;
using LangCode = short;
using RegionCode = short;

using TextEncoding = std::uint32_t;
using TextEncodingBase = std::uint32_t;
using TextEncodingVariant = std::uint32_t;
using TextEncodingFormat = std::uint32_t;
using TECObjectRef = struct OpaqueTECObjectRef*;

constexpr OSStatus kTextUnsupportedEncodingErr = -8738;  // no such encoding
constexpr OSStatus kTextMalformedInputErr = -8739;       // breaks the encoding's rules
constexpr OSStatus kTECNoConversionPathErr = -8749;      // no converter between the two
constexpr OSStatus kTECPartialCharErr = -8753;           // an element's end is not there
constexpr OSStatus kTECUnmappableElementErr = -8754;     // well formed, but not in the other encoding
constexpr OSStatus kTECUsedFallbacksStatus = -8783;      // never returned: nothing is substituted
constexpr OSStatus kTECOutputBufferFullStatus = -8785;   // the next character does not fit

constexpr TextEncodingBase kTextEncodingMacRoman = 0;
constexpr TextEncodingBase kTextEncodingUnicodeDefault = 0x0100;
constexpr TextEncodingBase kTextEncodingISOLatin1 = 0x0201;
constexpr TextEncodingBase kTextEncodingUS_ASCII = 0x0600;  // NOLINT: the services' name
constexpr TextEncodingVariant kTextEncodingDefaultVariant = 0;
constexpr TextEncodingFormat kUnicode16BitFormat = 0;
constexpr TextEncodingFormat kUnicodeUTF7Format = 1;
constexpr TextEncodingFormat kUnicodeUTF8Format = 2;
constexpr TextEncodingFormat kUnicodeUTF32Format = 3;
constexpr TextEncodingFormat kUnicodeUTF16BEFormat = 4;
constexpr TextEncodingFormat kUnicodeUTF16LEFormat = 5;
constexpr TextEncodingFormat kUnicodeUTF32BEFormat = 6;
constexpr TextEncodingFormat kUnicodeUTF32LEFormat = 7;

constexpr ScriptCode kTextScriptDontCare = -128;
constexpr LangCode kTextLanguageDontCare = -128;
constexpr RegionCode kTextRegionDontCare = -128;
constexpr LangCode langEnglish = 0;       // NOLINT: the services' name
constexpr LangCode langJapanese = 11;     // NOLINT: the services' name
constexpr LangCode langTradChinese = 19;  // NOLINT: the services' name
constexpr LangCode langKorean = 23;       // NOLINT: the services' name
constexpr LangCode langSimpChinese = 33;  // NOLINT: the services' name

/// Packs the three parts; bits that do not fit a part are dropped.
constexpr TextEncoding CreateTextEncoding(TextEncodingBase base, TextEncodingVariant variant,
                                          TextEncodingFormat format) {
    return (base & 0xFFFF) | (variant & 0x3FF) << 16 | (format & 0xF) << 26;
}

/// Makes a converter, which the caller must dispose of with TECDisposeConverter. One of the two encodings must be
/// UTF-16. If neither is, or if there is no table, the result is kTECNoConversionPathErr and null.
OSStatus TECCreateConverter(TECObjectRef* converter, TextEncoding from, TextEncoding to);

/// Converts characters until the input ends (noErr), one does not fit the output, or one cannot be
/// converted; `inputUsed` and `outputUsed` get what was read and written, in bytes. The input is then
/// at the character that did not fit or at the bad element, with all before it written; nothing is
/// substituted and no character divided. At an element without end more input may follow: the caller
/// passes its bytes again with the rest. After any other failure the context is to be cleared first.
/// What an encoding needs of shift state is kept for the next call.
OSStatus TECConvertText(TECObjectRef converter, ConstTextPtr input, ByteCount inputLength, ByteCount* inputUsed,
                        TextPtr output, ByteCount outputLength, ByteCount* outputUsed);

/// Ends a text: writes what brings the encoding back to its initial state. After
/// kTECOutputBufferFullStatus the caller repeats the call with more space.
OSStatus TECFlushText(TECObjectRef converter, TextPtr output, ByteCount outputLength, ByteCount* outputUsed);

/// Returns a converter to the state of a new one, also after a failure.
OSStatus TECClearConverterContextInfo(TECObjectRef converter);
OSStatus TECDisposeConverter(TECObjectRef converter);

/// Looks up a name of the IANA registry or a common alias, ignoring case. For an unknown name, `encoding` is
/// 0xFFFF and the result kTextUnsupportedEncodingErr. Does not allocate; logarithmic in the number of names.
OSStatus TECGetTextEncodingFromInternetName(TextEncoding* encoding, ConstStr255Param name);
/// The preferred name, in lower case; an empty one and kTextUnsupportedEncodingErr where there is none.
OSStatus TECGetTextEncodingInternetName(TextEncoding encoding, Str255 name);

/// The encoding of a script, and of the system's script for smSystemScript. Language, region and font are
/// ignored. paramErr, with `encoding` unchanged, for a number that is no script.
OSStatus UpgradeScriptInfoToTextEncoding(ScriptCode script, LangCode language, RegionCode region, ConstStr255Param font,
                                         TextEncoding* encoding);
/// The script and language of an encoding that belongs to a script; Roman and English for all others. Each
/// pointer may be null. The name of the font is always empty.
OSStatus RevertTextEncodingToScriptInfo(TextEncoding encoding, ScriptCode* script, LangCode* language, Str255 font);

/// The encoding of the application's narrow texts: the one that was set, or the locale's code set.
TextEncoding GetApplicationTextEncoding();
