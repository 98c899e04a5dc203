// Explicit inlining, where the compilers' own choice makes a lookup slower: LANG is a chain of
// small functions (dictionary/lookup.cpp).
#pragma once

#ifdef _MSC_VER
#define KELMO_LOCALIZER_ALWAYS_INLINE __forceinline
#define KELMO_LOCALIZER_NEVER_INLINE __declspec(noinline)
#else
#define KELMO_LOCALIZER_ALWAYS_INLINE __attribute__((always_inline)) inline
#define KELMO_LOCALIZER_NEVER_INLINE __attribute__((noinline))
#endif
