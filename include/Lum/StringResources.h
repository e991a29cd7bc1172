// Strings by number: what CString::LoadString looks a number up in, and in which order.
//
// First the index, a resource of type 'STRm' and number 0: it leads from string numbers to entries of
// the string lists ('STR#' 200 and up). Then single strings ('STR '). Then the main bundle's default table
// of localised strings and those that CString::AddStringTableForSearch names, where the decimal text of
// the number is the key. A number that nobody knows loads that text. What was looked up last is kept in 64
// slots, of which a number above 8 has an odd one, by design.
//
// The index is looked for once, and so is each number while its slot keeps it. After opening a resource
// file or changing the main bundle, set gStrResTableInited to false: the next look-up starts afresh.
// InitStrResTable by itself finds a new index but leaves what is kept. When the file with the index
// closes, the index is empty. For one thread at a time.
#pragma once

#include <Lum/Export.h>

extern LUM_API char** gStrResTable;      ///< The index's handle, which is never given back, or null.
extern LUM_API bool gStrResTableInited;  ///< Whether the index has been looked for.

/// Looks for the index in the open resource files and sorts it in memory; the file keeps its order.
LUM_API void InitStrResTable();
/// The number of entries in the index; 0 without one.
[[nodiscard]] LUM_API int NumStrRes();
/// Compares two entries of the index, of 4 bytes each, by string number (their first 16-bit field): negative,
/// 0 or positive.
[[nodiscard]] LUM_API int StrResCmp(const void* a, const void* b);
/// Does nothing, on purpose.
LUM_API void CheckStrResTableForDups(void* table, int count);
