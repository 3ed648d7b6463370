#pragma once

// The one public trace of the operating system: the type of a native window handle.
// Its value comes from the platform layer (src/platform), which is the only other place that
// knows which system it runs on.

#if defined(_WIN32)
struct HWND__;
#else
#include <cstdint>
#endif

namespace Window {

#if defined(_WIN32)
/// The Win32 window handle (`HWND`).
using NativeHandle = HWND__*;
#else
/// On X11 the window id (an X `Window`); under Wayland the address of the `wl_surface`.
/// 0 when the window system did not answer.
using NativeHandle = std::uintptr_t;
#endif

} // namespace Window
