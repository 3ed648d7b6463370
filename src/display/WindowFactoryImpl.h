// SPDX-License-Identifier: Zlib
#pragma once

#include <window/SWindowFactory.h>

namespace Window {

/// The one window factory: its lifetime is the lifetime of SDL's video subsystem.
///
/// Made only by `ManufactureWindowFactory`, which allows one per process. Holds no state and
/// keeps no list of its windows: every window must be released before the factory is deleted,
/// because a window still calls SDL when it closes. A window that outlives the factory is the
/// caller's error; SDL has then already torn the window down and the window's own close finds
/// nothing to query, so it saves "{0,0}", but nothing of that is promised.
class WindowFactoryImpl final : public SWindowFactory {
public:
    /// Starts SDL's video subsystem (and nothing else). Engine main thread.
    /// Throws `Common::ApplicationErrorException` with "Failed to initialize SDL: <reason>."
    /// when SDL refuses; SDL is then not stopped again.
    WindowFactoryImpl();

    /// Stops SDL. Every window must be gone by now.
    ~WindowFactoryImpl() override;

    WindowFactoryImpl(const WindowFactoryImpl&) = delete;
    WindowFactoryImpl& operator=(const WindowFactoryImpl&) = delete;

    /// See `SWindowFactory::CreateWindow`. The stored text of "Window/Resolution" is never
    /// changed here, so a malformed value fails every attempt until the file is edited.
    Zenk::IntrudablePointer<IWindow> CreateWindow() override;
};

} // namespace Window
