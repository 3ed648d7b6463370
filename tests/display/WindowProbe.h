#pragma once

// What the window tests need to look at an SDL window from outside the library: the SDL window
// behind a handle, and a minimised state that a server without a window manager never sets.

#include <window/NativeHandle.h>

#include <SDL.h>

namespace Probe {

/// The SDL window whose native handle is `handle`, or null when SDL has none (any more).
SDL_Window* SdlWindowOf(Window::NativeHandle handle);

/// The width that the X server gives the window `handle` (an unknown id ends the process).
int X11WidthOf(Window::NativeHandle handle);

/// Marks the window hidden as a window manager would (_NET_WM_STATE_HIDDEN) and pumps SDL's
/// events until SDL reports it minimised; false when it never does.
bool Minimise(SDL_Window* window);

/// Pumps SDL's events until `done()` holds; false when it never does.
template <class Done> bool PumpUntil(Done&& done) {
    for (int round = 0; round < 200; ++round) {
        SDL_PumpEvents();
        if (done())
            return true;
        SDL_Delay(10);
    }
    return false;
}

} // namespace Probe
