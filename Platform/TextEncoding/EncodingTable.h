// The table of encodings, by number: base, and for Unicode its format in bits 26 to 29.
#pragma once

#include <array>

#include "Platform/TextEncoding/EncodingNames.h"

namespace TextConversion {

inline constexpr auto kEncodingTable = std::to_array<EncodingRow>({
    {0x0000, "macintosh", "macintosh mac csmacintosh x-mac-roman"},
    {0x0001, "shift_jis", "x-mac-japanese"},
    {0x0002, "big5", "x-mac-chinesetrad x-mac-trad-chinese"},
    {0x0003, "euc-kr", "x-mac-korean"},
    {0x0019, "gb2312", "x-mac-chinesesimp x-mac-simp-chinese"},
    {0x0100, "", "utf-16 utf16 csutf16 unicode iso-10646-ucs-2 ucs-2 csunicode"},
    {0x0201, "",
     "iso-8859-1 iso_8859-1 iso_8859-1:1987 iso-ir-100 latin1 l1 ibm819 cp819 csisolatin1 iso8859-1 8859_1"},
    {0x0500, "windows-1252", "windows-1252 cp1252 cswindows1252 x-cp1252"},
    {0x0600, "",
     "us-ascii ascii iso-ir-6 ansi_x3.4-1968 ansi_x3.4-1986 iso_646.irv:1991 iso646-us us ibm367 cp367 csascii 646"},
    {0x0820, "iso-2022-jp", "iso-2022-jp csiso2022jp"},
    {0x0920, "euc-jp", "euc-jp extended_unix_code_packed_format_for_japanese cseucpkdfmtjapanese x-euc-jp eucjp"},
    {0x0A01, "shift_jis", "shift_jis ms_kanji csshiftjis x-sjis sjis shift-jis"},
    {0x04000100, "utf-7", "utf-7 utf7 csutf7 unicode-1-1-utf-7 csunicode11utf7"},
    {0x08000100, "", "utf-8 utf8 csutf8 unicode-1-1-utf-8"},
    {0x10000100, "", "utf-16be csutf16be"},
    {0x14000100, "", "utf-16le csutf16le"},
});

}  // namespace TextConversion
