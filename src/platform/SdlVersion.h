// SPDX-License-Identifier: Zlib
#pragma once

#include <SDL_version.h>

namespace Window::Platform {

/// The SDL version whose structure layout (SDL_SysWMinfo's above all) the library is built
/// against, for every system alike. SDL accepts the structure from any 2.x caller.
constexpr SDL_version builtAgainst{2, 28, 5};

} // namespace Window::Platform
