// Marks what the shared library exports; everything else stays hidden, as do the private operations
// of an exported class that are marked so.
#pragma once

#define LUM_API __attribute__((visibility("default")))
#define LUM_HIDDEN __attribute__((visibility("hidden")))
