// SPDX-License-Identifier: Zlib
#pragma once

// The platform layer: the only code of the library that knows which operating system it runs on.
// Everything else calls these functions and stays portable. PlatformUnix.cpp or PlatformWin32.cpp
// defines them, whichever CMake picks for the system; neither tests which system it is.

#include <window/NativeHandle.h>

struct SDL_Window;

namespace Window::Platform {

/// The native handle of `window` as the window system reports it: the HWND on Windows; elsewhere
/// the window system with SDL's connection and the X11 window or the Wayland surface. When the
/// window system does not answer, the empty handle. Same thread as the window's other calls.
NativeHandle NativeHandleOf(SDL_Window* window) noexcept;

/// Decodes UTF-8 into the platform's wide characters with the contract of Windows'
/// MultiByteToWideChar(CP_UTF8, 0, ...): with `destination` null (or `destinationSize` 0) it
/// returns the number of wide characters needed; otherwise it writes them and returns how many it
/// wrote. A `sourceLength` of -1 means up to and with the terminating NUL. It returns 0
/// (failure) for an empty source or a destination that is too small.
/// Malformed input never fails: each malformed sequence becomes U+FFFD. Wide characters are
/// UTF-16 code units on Windows and UTF-32 code points elsewhere. Pure; any thread.
int MultiByteToWide(const char* source, int sourceLength, wchar_t* destination,
                    int destinationSize) noexcept;

} // namespace Window::Platform
