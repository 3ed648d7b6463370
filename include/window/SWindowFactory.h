// SPDX-License-Identifier: Zlib
#pragma once

#include <window/IWindow.h>
#include <zenkbase/intrudable_pointer.h>

// <windows.h> makes CreateWindow a macro for CreateWindowA or CreateWindowW, which take eleven
// arguments, so the factory's member could be neither declared nor called. Only that alias is
// withdrawn: CreateWindowA, CreateWindowW and CreateWindowEx stay. It is not pushed and popped
// around the declaration, because the engine's calls after this header need the name free too.
// windows.h included after this header defines it again (docs/platform-headers.md).
#if defined(CreateWindow)
#undef CreateWindow
#endif

namespace Window {

/// The library's hold on the window system: it starts the video subsystem when made and stops
/// it when destroyed, so every window must be gone before the factory goes.
///
/// Made by `ManufactureWindowFactory`; the engine owns it and registers it in the instance
/// storage as the `SWindowFactory` singleton, which the input collector requires.
struct SWindowFactory {
    virtual ~SWindowFactory() = default;

    /// Opens a new window from the configuration ("Window/Resolution", "Window/FullScreen"),
    /// titled "Tavrino. Version: 905", at least 700 x 700. Engine main thread.
    /// The caller owns the returned handle, which is never empty.
    /// Throws `Zenk::MissingInstance` without a registered configuration file or message log;
    /// `Common::ApplicationErrorException` with "Failed to read configuration key:
    /// Window/Resolution." for a malformed stored size, or "Failed to create window: ..." when the
    /// window system refuses.
    /// A file that includes `<windows.h>` after this header withdraws its `CreateWindow` macro
    /// before calling this: \ref platform_headers.
    virtual Zenk::IntrudablePointer<IWindow> CreateWindow() = 0;
};

} // namespace Window
