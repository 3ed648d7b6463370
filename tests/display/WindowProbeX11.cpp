#include "WindowProbe.h"
#include "platform/Platform.h"

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
// (_NET_WM_STATE_HIDDEN), and SDL reads it on its next pump.
bool Minimise(SDL_Window* window) {
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
    return {"VK_KHR_surface", "VK_KHR_xlib_surface"};
}

} // namespace Probe
