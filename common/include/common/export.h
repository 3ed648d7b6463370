// SPDX-License-Identifier: Zlib
#pragma once

// The window library is built with hidden visibility. What a host must reach by name (the two
// manufacture functions) and what it must catch by type (the library's exception) is marked.
#if defined(_WIN32)
#if defined(WINDOW_BUILDING)
#define WINDOW_API __declspec(dllexport)
#else
#define WINDOW_API __declspec(dllimport)
#endif
#else
#define WINDOW_API __attribute__((visibility("default")))
#endif

// Keeps a member of an exported class inside the library: the exception's type information and
// virtual table must be shared for a catch by type, but its functions need not be.
#if defined(_WIN32)
#define WINDOW_LOCAL
#else
#define WINDOW_LOCAL __attribute__((visibility("hidden")))
#endif
