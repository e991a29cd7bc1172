// Host set-up: on a host without the services for encodings, bundles and resources, these functions set what the
// operating system would know. Also the functions that release the objects of those services that other
// operations of this library return.
//
// Where memory runs out, std::bad_alloc is thrown and nothing has changed. Functions for handles do not throw.
//
// Call the set-up before other threads use the library. It may be called from static initialisers.
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
/// one that is there and reads as a table counts. Tables are read once; a call makes them be read again. Where
/// a file cannot be opened or read, the next look-up tries it once more.
LUM_API void SetMainBundle(const std::filesystem::path& directory);
/// Tells a developer why a table of the main bundle, "Localizable" for "", is not found: a line for each
/// file that is passed over, with the place and what is wrong there. Empty if all is well. Reads anew.
[[nodiscard]] LUM_API std::string ExplainStringTable(const std::string& name);

/// Opens a resource file and puts it in front of the search order; a writable one that is not there is
/// made. Returns a reference number above 0, or -1, with nothing changed, if the file cannot be opened or
/// made, is damaged (ExplainResourceFile says how), or is to be writable and is open for writing already.
LUM_API short OpenResourceFile(const std::filesystem::path& path, bool writable);
/// Writes changed and added resources back: at any moment, whatever happens, the file is the old or the
/// new one, whole. False, with file and memory as they were, if that fails, for more than the layout can
/// hold (16 MB, about 2,700 resources), and for a file that is not open or not writable.
LUM_API bool UpdateResourceFile(short reference);
/// Writes back what has changed and closes the file; its resources' handles are then no longer to be
/// used. False, with the file still open, if it cannot be written, and for one that is not open. What is
/// still open at the program's end is not written.
LUM_API bool CloseResourceFile(short reference);

}  // namespace Lum::Platform

/// Any object of Core Foundation, such as a CFStringRef. The release of its last reference frees it. The counts
/// are atomic, so any thread may use and release an object.
using CFTypeRef = const void*;

/// Adds a reference, which CFRelease ends, and returns `object`, which may be null.
LUM_API CFTypeRef CFRetain(CFTypeRef object);
/// Ends a reference: one that CFRetain added, or one of a function named Create or Copy. Null is ignored.
LUM_API void CFRelease(CFTypeRef object);

// Handles refer to blocks of memory that may move when they are resized: `*handle` is the address of the block.
// A pointer that is no handle, or no longer one, is recognised and ignored. For one thread at a time.

/// A block of `size` zeros, to be freed with DisposeHandle; null if there is no memory for it or `size`
/// is negative or above 0x7FFFFFFF.
LUM_API char** NewHandle(long size);
/// Frees the block; ignored for one that belongs to an open resource file.
LUM_API void DisposeHandle(char** handle);
/// The block's size in bytes; 0 for what is no handle.
LUM_API long GetHandleSize(char** handle);
/// Makes the block `size` bytes long; what is added is zero. The size stays as it is if there is no memory
/// for it, it is negative, or a locked block is to grow.
LUM_API void SetHandleSize(char** handle, long size);
