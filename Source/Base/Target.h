// Marks a region whose functions may use instructions that not every processor has: all between
// LUM_TARGET_BEGIN("avx2,bmi") and LUM_TARGET_END. Nobody may call into it before Cpu.h has been asked.
//
// A region and not an attribute of each function, since templates and lambdas are part of it. Headers of the
// standard library are included ahead of it: what they define would otherwise be compiled for it as well.
#pragma once

/// The vectors of 64-bit ARM processors. Their kernels read bytes in the order of little-endian units.
#if defined(__aarch64__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
#define LUM_HAS_NEON
#endif

#define LUM_PRAGMA(text) _Pragma(#text)

#ifdef __clang__
#define LUM_TARGET_BEGIN(features) \
    LUM_PRAGMA(clang attribute push(__attribute__((target(features))), apply_to = function))
#define LUM_TARGET_END LUM_PRAGMA(clang attribute pop)
#else
#define LUM_TARGET_BEGIN(features) LUM_PRAGMA(GCC push_options) LUM_PRAGMA(GCC target(features))
#define LUM_TARGET_END LUM_PRAGMA(GCC pop_options)
#endif
