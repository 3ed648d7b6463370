#include "WindowProbe.h"
#include "platform/Platform.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace Probe {

int NativeWidthOf(Window::NativeHandle handle) {
    RECT client{};
    if (GetClientRect(handle, &client) == 0)
        return -1;
    return client.right - client.left;
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
