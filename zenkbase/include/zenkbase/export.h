// SPDX-License-Identifier: Zlib
#pragma once

// zenkbase is built with hidden visibility; only what other modules import is marked.
#if defined(_WIN32)
#if defined(ZENKBASE_BUILDING)
#define ZENK_API __declspec(dllexport)
#else
#define ZENK_API __declspec(dllimport)
#endif
#else
#define ZENK_API __attribute__((visibility("default")))
#endif
