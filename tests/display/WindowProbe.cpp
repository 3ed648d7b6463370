#include "WindowProbe.h"

#include "platform/Platform.h"

// Xlib's `Window` type would collide with the library's namespace.
#define Window X11Window
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#undef Window

namespace Probe {

SDL_Window* SdlWindowOf(Window::NativeHandle handle) {
    // SDL numbers windows from 1 and has no list of them; a test makes only a few.
    for (Uint32 id = 1; id < 64; ++id) {
        SDL_Window* window = SDL_GetWindowFromID(id);
        if (window != nullptr && Window::Platform::NativeHandleOf(window) == handle)
            return window;
    }
    return nullptr;
}

int X11WidthOf(Window::NativeHandle handle) {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr)
        return -1;
    XWindowAttributes attributes{};
    const Status found = XGetWindowAttributes(display, handle, &attributes);
    XCloseDisplay(display);
    return found != 0 ? attributes.width : -1;
}

bool Minimise(SDL_Window* window) {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr)
        return false;
    Atom hidden = XInternAtom(display, "_NET_WM_STATE_HIDDEN", False);
    XChangeProperty(display, Window::Platform::NativeHandleOf(window),
                    XInternAtom(display, "_NET_WM_STATE", False), XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<unsigned char*>(&hidden), 1);
    XSync(display, False);
    XCloseDisplay(display);
    return PumpUntil([&] { return (SDL_GetWindowFlags(window) & SDL_WINDOW_MINIMIZED) != 0; });
}

} // namespace Probe
