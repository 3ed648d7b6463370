// SPDX-License-Identifier: Zlib
#include "WindowProbe.h"
#include "platform/Platform.h"

// On Linux a window is on an X server or a Wayland compositor, whichever SDL's driver reached. X
// is asked as another client would ask it; a Wayland compositor answers no such question.

// Xlib's `Window` type would collide with the library's namespace.
#define Window X11Window
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#undef Window

namespace Probe {

std::optional<Window::Resolution> NativeSizeOf(Window::NativeHandle handle) {
    // Asked on a connection of its own, as another program would, not on SDL's.
    if (handle.system != Window::WindowSystem::X11)
        return std::nullopt;
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr)
        return std::nullopt;
    XWindowAttributes attributes{};
    const Status found = XGetWindowAttributes(display, handle.x11.window, &attributes);
    XCloseDisplay(display);
    if (found == 0)
        return std::nullopt;
    return Window::Resolution{static_cast<unsigned short>(attributes.width),
                              static_cast<unsigned short>(attributes.height)};
}

// A server without a window manager never minimises: the state is set as a window manager would
// (_NET_WM_STATE_HIDDEN), and SDL reads it on its next pump. Wayland tells a client nothing when
// its window is minimised, so SDL never reports it there: the request is made all the same, and
// the answer is false.
bool Minimise(SDL_Window* window) {
    if (Window::Platform::NativeHandleOf(window).system != Window::WindowSystem::X11) {
        SDL_MinimizeWindow(window);
        return (SDL_GetWindowFlags(window) & SDL_WINDOW_MINIMIZED) != 0;
    }
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr)
        return false;
    Atom hidden = XInternAtom(display, "_NET_WM_STATE_HIDDEN", False);
    XChangeProperty(display, Window::Platform::NativeHandleOf(window).x11.window,
                    XInternAtom(display, "_NET_WM_STATE", False), XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<unsigned char*>(&hidden), 1);
    XSync(display, False);
    XCloseDisplay(display);
    return PumpUntil([&] { return (SDL_GetWindowFlags(window) & SDL_WINDOW_MINIMIZED) != 0; });
}

std::set<std::string> SurfaceExtensions() {
    if (std::string(SDL_GetCurrentVideoDriver()) == "wayland")
        return {"VK_KHR_surface", "VK_KHR_wayland_surface"};
    return {"VK_KHR_surface", "VK_KHR_xlib_surface"};
}

} // namespace Probe
