// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"
#include "platform/Utf8Decoder.h"
#include "platform/WindowInfo.h"

#include <cstddef>
#include <cstring>
#include <string_view>

// The platform layer of the Unix-like systems: windows are X11's or Wayland's, as SDL reports
// them, and wchar_t holds UTF-32, decoded here since there is no system call to do it.

namespace Window::Platform {

NativeHandle NativeHandleOf(SDL_Window* window) noexcept {
    SDL_SysWMinfo info;
    if (!DescribeWindow(window, info))
        return {}; // no surface to make
    NativeHandle handle;
    switch (info.subsystem) {
    case SDL_SYSWM_X11:
        handle.system = WindowSystem::X11;
        handle.x11 = {info.info.x11.display, info.info.x11.window};
        break;
    case SDL_SYSWM_WAYLAND:
        handle.system = WindowSystem::Wayland;
        handle.wayland = {info.info.wl.display, info.info.wl.surface};
        break;
    default:
        // Another driver's windows (SDL's own offscreen ones, say) have no surface to offer.
        break;
    }
    return handle;
}

int MultiByteToWide(const char* source, int sourceLength, wchar_t* destination,
                    int destinationSize) noexcept {
    // As on Windows, -1 means "up to and with the terminating NUL".
    if (source != nullptr && sourceLength == -1)
        sourceLength = static_cast<int>(std::strlen(source)) + 1;
    if (source == nullptr || sourceLength <= 0 || destinationSize < 0)
        return 0;

    const std::string_view bytes(source, static_cast<std::size_t>(sourceLength));
    // No more code points than bytes, and the bytes' length is an int.
    const int needed = static_cast<int>(Utf8Decoder::Count(bytes));
    if (destination == nullptr || destinationSize == 0)
        return needed;
    if (needed > destinationSize)
        return 0;

    int written = 0;
    for (Utf8Decoder decoder(bytes); !decoder.Done();)
        destination[written++] = static_cast<wchar_t>(decoder.Next());
    return written;
}

} // namespace Window::Platform
