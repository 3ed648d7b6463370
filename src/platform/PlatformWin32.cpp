// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"
#include "platform/SdlVersion.h"

// SDL_syswm.h includes windows.h: without its min and max macros, and only its core.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <SDL.h>
#include <SDL_syswm.h>

#include <windows.h>

// The platform layer of Windows: windows are HWNDs, and the system decodes UTF-8 into its UTF-16
// wide characters itself.

namespace Window::Platform {

NativeHandle NativeHandleOf(SDL_Window* window) noexcept {
    SDL_SysWMinfo info{};
    info.version = builtAgainst;
    // SDL refuses for a window it does not know and for a window system it cannot describe; the
    // empty handle then tells the renderer that there is no surface to make.
    if (SDL_GetWindowWMInfo(window, &info) != SDL_TRUE)
        return {};
    return info.info.win.window;
}

int MultiByteToWide(const char* source, int sourceLength, wchar_t* destination,
                    int destinationSize) noexcept {
    // CP_UTF8 with no flags: malformed input is replaced, not refused. Windows refuses a null
    // destination with a nonzero size (ERROR_INVALID_PARAMETER), where the contract counts.
    return MultiByteToWideChar(CP_UTF8, 0, source, sourceLength, destination,
                               destination == nullptr ? 0 : destinationSize);
}

} // namespace Window::Platform
