// C's string functions for NUL-terminated texts of 16-bit units, for hosts without the services' own.
//
// Names and arguments are those of the services, but not the C linkage. No function keeps a pointer, and
// all may be called from any thread. Texts need not be well-formed UTF-16: a unit is a unit.
#pragma once

#include <cstdarg>
#include <cstddef>

// --- Spans: linear in the text read, whatever the size of a set of units below 256 ---

/// How many units at the start of `text` are all in `set`; 0 for an empty set.
std::size_t uc16_wcsspn(const unsigned short* text, const unsigned short* set);
/// How many units stand before the first that is in `set`; the whole length if none is.
std::size_t uc16_wcscspn(const unsigned short* text, const unsigned short* set);
/// The first unit that is in `set`; null if there is none.
const unsigned short* uc16_wcspbrk(const unsigned short* text, const unsigned short* set);

// --- Formats: C's printf with POSIX's positions, and 16-bit text in and out ---
//
//   %s %ls        a 16-bit text (const unsigned short* or const char16_t*); a precision ends it, and what
//                 lies behind is not read
//   %S %hs        a narrow text in the application's encoding; it ends before the first malformed
//                 character, and a precision leaves no half of a surrogate pair
//   %c %lc        a 16-bit unit;  %C %hc  a narrow character, nothing if the byte is not a whole one
//   %d %i %u %o %x %X, %e %f %g %a and capitals, %p
//                 as the C library has them in the "C" locale, whatever locale is set; %' groups nothing
//   %n            takes its pointer and writes nothing
//   %%            a percent sign
//
// Width and precision count units of the result. A null text is "(null)", cut by a precision like any
// other. What is not a conversion of C, or has a length modifier that does not belong to it, is copied to
// the result and takes no argument.
//
// Positions ("%2$s %1$*3$d") go up to 64; one between others that no conversion names is taken to be an
// int. The first conversion decides between positions and arguments in their order. One that differs in this,
// or that reads a position as another type than the first one did, is copied to the result.

/// The units that uc16_vswprintf needs for these arguments, terminator included: never too small, exact
/// but for numbers. -1 if no int holds that. Formats no number. The caller's `args` is not advanced.
int uc16_estimateformatsize(const unsigned short* format, va_list args);
/// Formats into a buffer of `size` units, and cuts what does not fit. Returns the units written without
/// the terminator, which is always there (unless `size` is 0: nothing is written). The caller's `args`
/// is not advanced. May throw std::bad_alloc for a long double of more than 1,500 digits.
int uc16_vswprintf(unsigned short* buffer, std::size_t size, const unsigned short* format, va_list args);

// --- Copies ---

/// Writes `text` to `bytes` in the application's encoding, whole characters only and at most `size`
/// bytes, and a NUL if it fits. Returns the bytes written without the NUL. The text ends
/// before the first character that is malformed or that the encoding does not have.
std::size_t uc16_wcstombs(char* bytes, const unsigned short* text, std::size_t size);
/// Copies `units` units; the two ranges do not overlap. Returns `to`.
unsigned short* uc16_wmemcpy(unsigned short* to, const unsigned short* from, std::size_t units);
