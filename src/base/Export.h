// SPDX-License-Identifier: MIT
// What the library exports is marked; everything else stays inside, on every host.
#pragma once

#if !defined(_MSVC_LANG) && __cplusplus < 202002L || defined(_MSVC_LANG) && _MSVC_LANG < 202002L
#error "The headers of VlGeneralServices need C++20: compile with -std=c++20 or later"
#endif

// A macro, since attributes have no other name that differs between hosts. Programs import nothing by
// attribute: the linker finds functions, virtual tables and type information in the import library.
#if defined(_WIN32) && defined(VLGS_BUILDING)
#define VLGS_API __declspec(dllexport)
#elif defined(_WIN32)
#define VLGS_API
#else
#define VLGS_API [[gnu::visibility("default")]]
#endif
