// Marks what the shared library exports; everything else stays hidden, as do the private operations
// of an exported class that are marked so. Views say that they must not outlive what they are made of, which
// compilers that know the attribute check.
#pragma once

#define LUM_API __attribute__((visibility("default")))
#define LUM_HIDDEN __attribute__((visibility("hidden")))

#if defined(__has_cpp_attribute) && __has_cpp_attribute(clang::lifetimebound)
#define LUM_LIFETIMEBOUND [[clang::lifetimebound]]
#else
#define LUM_LIFETIMEBOUND
#endif
