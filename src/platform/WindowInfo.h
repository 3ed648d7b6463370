// SPDX-License-Identifier: Zlib
#pragma once

// What SDL tells of a window's place in its window system, for the platform files alike. Its
// header brings the system's own: windows.h (its core, without min and max) on Windows, Xlib on
// X11, whose type `Window` would collide with this library's namespace and is called X11Window
// here instead (only C functions take it, so nothing changes at link time).

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <SDL.h>
#define Window X11Window
#include <SDL_syswm.h>
#undef Window

namespace Window::Platform {

/// SDL's description of `window`, asked with the structure layout of SDL 2.28.5, which SDL
/// accepts from any 2.x caller; none for a window SDL does not know or a window system it
/// cannot describe, which the platform files answer with the empty handle. Same thread as the
/// window's other calls.
inline bool DescribeWindow(SDL_Window* window, SDL_SysWMinfo& info) noexcept {
    info = SDL_SysWMinfo{};
    info.version = SDL_version{2, 28, 5};
    return SDL_GetWindowWMInfo(window, &info) == SDL_TRUE;
}

} // namespace Window::Platform
