// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"
#include "platform/WindowInfo.h"

#include <windows.h>

// The platform layer of Windows: windows are HWNDs, and the system decodes UTF-8 into its UTF-16
// wide characters itself.

namespace Window::Platform {

NativeHandle NativeHandleOf(SDL_Window* window) noexcept {
    SDL_SysWMinfo info;
    if (!DescribeWindow(window, info))
        return {}; // no surface to make
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
