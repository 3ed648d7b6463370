// SPDX-License-Identifier: Zlib
#include "WindowProbe.h"
#include "platform/Platform.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace Probe {

std::optional<Window::Resolution> NativeSizeOf(Window::NativeHandle handle) {
    RECT client{};
    if (IsWindow(handle) == 0 || GetClientRect(handle, &client) == 0)
        return std::nullopt;
    return Window::Resolution{static_cast<unsigned short>(client.right - client.left),
                              static_cast<unsigned short>(client.bottom - client.top)};
}

// Windows minimises a window without help, as its title bar's button does.
bool Minimise(SDL_Window* window) {
    ShowWindow(Window::Platform::NativeHandleOf(window), SW_MINIMIZE);
    return PumpUntil([&] { return (SDL_GetWindowFlags(window) & SDL_WINDOW_MINIMIZED) != 0; });
}

std::set<std::string> SurfaceExtensions() {
    return {"VK_KHR_surface", "VK_KHR_win32_surface"};
}

} // namespace Probe
