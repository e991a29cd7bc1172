// Marks what the shared library exports; everything else stays hidden, as do the private operations
// of an exported class that are marked so. Views say that they must not outlive what they are made of, which
// compilers that know the attribute check.
#pragma once

#define LUM_API __attribute__((visibility("default")))
#define LUM_HIDDEN __attribute__((visibility("hidden")))

// C's preprocessor cannot read an attribute's name with "::" in it.
#ifdef __cplusplus
#if __has_cpp_attribute(clang::lifetimebound)
#define LUM_LIFETIMEBOUND [[clang::lifetimebound]]
#endif
#endif
#ifndef LUM_LIFETIMEBOUND
#define LUM_LIFETIMEBOUND
#endif
