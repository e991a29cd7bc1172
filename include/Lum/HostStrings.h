// The host's strings, which are Core Foundation's, from and to an application's texts; and the record
// that HFS keeps a name in. What a CString has to do with them is among its members.
//
// The strings are immutable and may be used on any thread. The caller owns a string that a function named Create
// returns, and releases it with CFRelease (<Lum/Platform.h>). An encoding is a Core Foundation number,
// of which the low 32 bits count: 0x08000100 is UTF-8, 0xFFFFFFFF the application's encoding.
#pragma once

#include <Lum/Export.h>
#include <Lum/Units.h>

/// An immutable text of UTF-16 units; null for no text.
using CFStringRef = const struct __CFString*;  // NOLINT: the services' name

/// A file name as HFS keeps it: `length` units of UTF-16, not 0-terminated.
struct HFSUniStr255 {
    unsigned short length;        ///< Units in use, 255 at most.
    unsigned short unicode[255];  ///< The units; those behind the length mean nothing.
};
static_assert(sizeof(HFSUniStr255) == 512);

/// A string from the NUL-terminated `text`, of which `length` says nothing. Null for a null text and
/// one that is not valid in the encoding from end to end.
LUM_API CFStringRef CFStringCreateWithLPCSTR(const char* text, long length, unsigned long encoding);
/// The same, for a text that stays alive as long as the string.
LUM_API CFStringRef CFStringCreateWithLPCSTRNoCopy(const char* text, long length, unsigned long encoding);
/// A string of `length` units, or up to the first 0 unit if that is negative. Null for null. The
/// encoding is ignored.
LUM_API CFStringRef CFStringCreateWithLPCWSTR(Lum::UnitPointer text, long length, unsigned long encoding);
/// The same without a copy: the units must stay alive and unchanged as long as anybody refers to the
/// string, a CString that took its text from it included.
LUM_API CFStringRef CFStringCreateWithLPCWSTRNoCopy(Lum::UnitPointer text, long length, unsigned long encoding);

/// Copies at most `max` units and a 0 behind them, so that `buffer` holds at least max + 1 units: of "abcdef"
/// and 3 it gets "abc". Only the 0 for a null string. The encoding is ignored.
LUM_API void CFStringGetLPWSTR(CFStringRef string, unsigned short* buffer, long max, unsigned long encoding);
inline void CFStringGetLPWSTR(CFStringRef string, char16_t* buffer, long max, unsigned long encoding) {
    CFStringGetLPWSTR(string, Lum::AsUnits(buffer), max, encoding);
}
/// Writes the text and a NUL to a buffer of `size` bytes. If both do not fit, or the encoding cannot express the
/// text, the whole buffer becomes 0. Only the NUL for a null string; nothing if the size is not positive.
LUM_API void CFStringGetLPSTR(CFStringRef string, char* buffer, long size, unsigned long encoding);
