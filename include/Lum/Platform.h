// Host set-up: what the operating system would know, on hosts without its services; and what gives back
// the objects of those services that this library's operations hand out.
//
// The set-up is to be called before other threads use the library; may be called from static initialisers.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include <Lum/Export.h>

namespace Lum::Platform {

/// Takes the script and the code set from a POSIX locale name: with "ja_JP.eucJP" the system's script is
/// Japanese, of two-byte characters, and the application's encoding EUC-JP unless another was set. Any
/// language but Japanese, Korean and Chinese is Roman, as is an empty name. Without a call, the name in
/// LC_ALL, LC_CTYPE or LANG, in that order.
LUM_API void SetLocale(const std::string& posixName);

/// Sets the encoding of the application's narrow texts, as a TextEncoding number: 0x08000100 is UTF-8.
/// Without a call, or with 0xFFFF, the locale's code set: UTF-8 for "C", and where none is named or it
/// is not known.
LUM_API void SetApplicationTextEncoding(std::uint32_t textEncoding);

/// Names the volume that the POSIX path "/" is on in colon-separated paths, in UTF-8; "Macintosh HD"
/// without a call. Every other volume is the folder of its name below "/Volumes". A name is not empty
/// and holds neither ":" nor NUL; with any other, paths of that volume are not read back.
LUM_API void SetStartupVolumeName(const std::string& utf8);

/// Names the folder whose tables of localised strings, TABLE.strings, the main bundle answers from; the
/// executable's folder without a call. In its "Resources", or in itself where there is none, a table is
/// looked for in ll_CC.lproj and ll.lproj of the locale, en.lproj, Base.lproj, and beside them: the first
/// one that is there and reads as a table counts. Tables are read once; a call makes them be read again.
LUM_API void SetMainBundle(const std::filesystem::path& directory);
/// Tells a developer why a table of the main bundle, "Localizable" for "", is not found: a line for each
/// file that is passed over, with the place and what is wrong there. Empty if all is well. Reads anew.
[[nodiscard]] LUM_API std::string ExplainStringTable(const std::string& name);

/// Opens a resource file and puts it in front of the search order; a writable one that is not there is
/// made. Returns a reference number above 0, or -1, with nothing changed, if the file cannot be opened or
/// made, does not hold together (ExplainResourceFile tells why), or is to be writable and is so already.
LUM_API short OpenResourceFile(const std::filesystem::path& path, bool writable);
/// Writes changed and added resources back: at any moment, whatever happens, the file is the old or the
/// new one, whole. False, with file and memory as they were, if that fails, for more than the layout has
/// room for (16 MB, about 2,700 resources), and for a file that is not open or not writable.
LUM_API bool UpdateResourceFile(short reference);
/// Writes back what has changed and closes the file; its resources' handles are then no longer to be
/// used. False, with the file still open, if it cannot be written, and for one that is not open. What is
/// still open at the program's end is not written.
LUM_API bool CloseResourceFile(short reference);

}  // namespace Lum::Platform

/// Any object of Core Foundation, such as a CFStringRef. It goes with its last reference; counting is
/// atomic, so an object may be used and given back on any thread.
using CFTypeRef = const void*;

/// Adds a reference, to be given back with CFRelease, and returns `object`; null stays null.
LUM_API CFTypeRef CFRetain(CFTypeRef object);
/// Gives a reference back: one that CFRetain added or that came with a function named Create. Null is
/// ignored.
LUM_API void CFRelease(CFTypeRef object);

// Handles are blocks of memory that may move when they are resized: `*handle` is where the block stands.
// What is no handle, or no longer one, is recognised and left alone. For one thread at a time.

/// A block of `size` zeros, to be given back with DisposeHandle; null if there is no memory for it or `size`
/// is negative or above 0x7FFFFFFF.
LUM_API char** NewHandle(long size);
/// Gives the block back; ignored for one that belongs to an open resource file.
LUM_API void DisposeHandle(char** handle);
/// The block's size in bytes; 0 for what is no handle.
LUM_API long GetHandleSize(char** handle);
/// Makes the block `size` bytes long; what is added is zero. The size stays as it is if there is no memory
/// for it, it is negative, or a locked block is to grow.
LUM_API void SetHandleSize(char** handle, long size);
