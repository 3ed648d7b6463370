// SPDX-License-Identifier: Zlib
#pragma once

// The one public trace of the operating system: what a renderer needs to reach the window through
// its window system. Its value comes from the platform layer (src/platform), the only other place
// that knows which system it runs on. Only forward declarations here: a file that includes this
// header gets no platform header with it.

#if defined(_WIN32)
struct HWND__;
#else
#include <cstdint>
struct _XDisplay; // Xlib's Display
struct wl_display;
struct wl_surface;
#endif

namespace Window {

#if defined(_WIN32)

/// The Win32 window handle (`HWND`); null when the window system did not answer. `<windows.h>`
/// beside these headers: \ref platform_headers.
using NativeHandle = HWND__*;

#else

/// The window system that SDL put a window on. Xlib names its own type `Window` and its empty
/// value `None`: neither name is used here, so that the enumeration can sit beside them.
enum class WindowSystem : std::uint8_t {
    /// SDL could not describe the window (an unknown window, or a driver without native windows
    /// such as "offscreen"): there is nothing to make a surface for.
    Unknown,
    /// An X server, reached through Xlib.
    X11,
    /// A Wayland compositor.
    Wayland,
};

/// The window as its window system knows it, with the connection that it belongs to: `system`
/// says which member holds it, and every other member is empty. The connection is SDL's own, so
/// a renderer draws on the server that the window is on and needs no connection of its own. It
/// stays valid while the window lives, and belongs to SDL: never close it.
/// `Window::Vulkan::CreateSurface` makes the surface from it, so that a renderer needs no X or
/// Wayland header; one that includes them anyway finds how in \ref platform_headers.
struct NativeHandle {
    /// An X11 window.
    struct X11 {
        /// SDL's connection to the X server (`Display*`).
        _XDisplay* display = nullptr;
        /// The window's id (an X `Window`, which is an `XID`).
        unsigned long window = 0;
    };

    /// A Wayland surface.
    struct Wayland {
        /// SDL's connection to the compositor.
        wl_display* display = nullptr;
        /// The window's surface.
        wl_surface* surface = nullptr;
    };

    /// Which member holds the window; `Unknown` when neither does.
    WindowSystem system = WindowSystem::Unknown;
    /// Set when `system` is `X11`.
    X11 x11;
    /// Set when `system` is `Wayland`.
    Wayland wayland;

    /// True when the handle names a window (`system` is not `Unknown`).
    explicit operator bool() const noexcept { return system != WindowSystem::Unknown; }
};

/// Handles are equal when they name the same window on the same connection.
inline bool operator==(const NativeHandle& left, const NativeHandle& right) noexcept {
    return left.system == right.system && left.x11.display == right.x11.display &&
           left.x11.window == right.x11.window && left.wayland.display == right.wayland.display &&
           left.wayland.surface == right.wayland.surface;
}

/// The negation of `==`.
inline bool operator!=(const NativeHandle& left, const NativeHandle& right) noexcept {
    return !(left == right);
}

#endif

} // namespace Window
