// SPDX-License-Identifier: Zlib
#include "WindowProbe.h"

#include "platform/Platform.h"

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

} // namespace Probe
