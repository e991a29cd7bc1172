// The main bundle's localised strings: a folder of tables, one folder a language.
//
// A table is looked for in the bundle's Resources folder, or in the bundle itself where it has none: in
// ll_CC.lproj and ll.lproj of the locale, en.lproj, Base.lproj, and beside them. The first file that is
// there and is a table counts; the others are not asked. It is read once. For one thread at a time.
#pragma once

#include "Platform/CoreFoundation/CFString.h"

using CFBundleRef = struct __CFBundle*;  // NOLINT: the services' name

/// The bundle that Lum::Platform::SetMainBundle names, or the executable's folder. It stays the
/// services'.
CFBundleRef CFBundleGetMainBundle();

/// The string of a key in a table, "Localizable" for null or the empty name; `value`, or for null or the
/// empty string `key`, if it is not there. The caller owns a reference to it either way.
CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key, CFStringRef value, CFStringRef tableName);
