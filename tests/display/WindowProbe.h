// SPDX-License-Identifier: Zlib
#pragma once

// What the window tests need to look at an SDL window from outside the library: the SDL window
// behind a handle, and what the window system itself says about it. The window system's part has
// one source per platform (WindowProbeLinux.cpp, WindowProbeWin32.cpp).

#include <window/NativeHandle.h>
#include <window/Resolution.h>

#include <SDL.h>

#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace Probe {

/// The SDL window whose native handle is `handle`, or null when SDL has none (any more).
SDL_Window* SdlWindowOf(Window::NativeHandle handle);

/// The client size that the window system gives the window `handle`, asked outside SDL; none
/// when it knows no such window, and always none on Wayland, whose compositor tells no client
/// the size of another's surface.
std::optional<Window::Resolution> NativeSizeOf(Window::NativeHandle handle);

/// Minimises the window as the window system's own controls would and pumps SDL's events until
/// SDL reports it minimised; false when it never does.
bool Minimise(SDL_Window* window);

/// The Vulkan instance extensions that a surface on this window system needs.
std::set<std::string> SurfaceExtensions();

/// Pumps SDL's events until `done()` holds; false when it has not after 30 s. The bound only
/// turns a state that never comes into a failure: a loaded machine may take seconds to deliver.
template <class Done> bool PumpUntil(Done&& done) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (true) {
        SDL_PumpEvents();
        if (done())
            return true;
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        SDL_Delay(10);
    }
}

} // namespace Probe
