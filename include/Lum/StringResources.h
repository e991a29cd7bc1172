// Strings by number: what CString::LoadString looks a number up in, and in which order.
//
// First the index, a resource of type 'STRm' and number 0: it leads from string numbers to entries of
// the string lists ('STR#' 200 and up). Then single strings ('STR '). Then the main bundle's default table
// of localised strings and those that CString::AddStringTableForSearch names, where the decimal text of
// the number is the key. A number that nobody knows loads that text. What was looked up last is kept in 64
// cache slots. A number above 8 has an odd slot, so that at most 36 numbers are cached.
//
// The index is looked for once, and so is each number while it is cached. After opening a resource
// file or changing the main bundle, set gStrResTableInited to false: the next look-up starts afresh.
// InitStrResTable by itself finds a new index but leaves the cache as it is. When the file with the index
// closes, the index is empty. For one thread at a time.
#pragma once

#include <Lum/Export.h>

extern LUM_API char** gStrResTable;      ///< The index's handle, which is never released, or null.
extern LUM_API bool gStrResTableInited;  ///< Whether the index has been looked for.

/// Looks for the index in the open resource files and sorts it in memory; the file keeps its order. If there is
/// no memory to read it, std::bad_alloc is thrown, and the next look-up looks for it again.
LUM_API void InitStrResTable();
/// The number of entries in the index; 0 if there is none, or none has been looked for.
[[nodiscard]] LUM_API int NumStrRes();
/// Compares two entries of the index, of 4 bytes each, by string number (their first 16-bit field): negative,
/// 0 or positive.
[[nodiscard]] LUM_API int StrResCmp(const void* a, const void* b);
/// Compatibility: does nothing; applications call it.
LUM_API void CheckStrResTableForDups(void* table, int count);
