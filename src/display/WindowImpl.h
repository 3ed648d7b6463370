// SPDX-License-Identifier: Zlib
#pragma once

#include <window/IWindow.h>

#include <memory>
#include <string>

struct SDL_Window;

namespace Window {

/// The library's one window: a thin owner of an SDL window made for Vulkan rendering.
///
/// Made only by `WindowFactoryImpl::CreateWindow` and owned by the `Zenk::IntrudablePointer`
/// handles to it; it closes with its last handle, saving its size and full-screen state. The
/// size is never stored here: every operation asks SDL. The message log and the configuration
/// file must stay registered for the window's whole life, and the window must be gone before
/// the factory (see `WindowFactoryImpl`).
class WindowImpl final : public IWindow {
public:
    /// Logs "Creating window: <name>" and opens a Vulkan window of `resolution`, each field
    /// raised to 700, in desktop full screen when `fullScreen` is set. An empty `name` becomes
    /// "Window". The window is made resizable with a minimum of 700 x 700, the system cursor is
    /// hidden and mouse capture is off. Engine main thread.
    /// Throws `Zenk::MissingInstance` without a registered message log (before SDL is called),
    /// and `Common::ApplicationErrorException` with "Failed to create window: <name>\n->\t<reason>"
    /// when SDL refuses; nothing is written to the configuration then.
    WindowImpl(const std::string& name, Resolution resolution, bool fullScreen);

    /// Logs "Destroying window: <name>.", closes the SDL window and then writes
    /// "Window/Resolution" (the size at that moment, "{0,0}" when minimised) and
    /// "Window/FullScreen" ("1" or "0", the state last asked for). Lets nothing out: a step
    /// whose service is missing or throws is skipped and the others still run, so the SDL
    /// window is closed in every case. Runs on the thread that drops the last handle.
    ~WindowImpl() override;

    WindowImpl(const WindowImpl&) = delete;
    WindowImpl& operator=(const WindowImpl&) = delete;

    /// 0 x 0 when the window already has the size `requested` (which is how a resize is told to
    /// do nothing); otherwise `requested` with each field raised to 700 by itself. Before the
    /// SDL window exists there is no current size and the answer is always the raised request.
    /// Engine main thread.
    Resolution AdjustResolution(Resolution requested) const;

    // --- IWindow ---

    void SetFullScreen(bool on) override;
    void SetResolution(const Resolution& resolution) override;
    Resolution GetResolution() override;
    Resolution GetDrawableSize() override;
    float GetAspectRatio() override;
    NativeHandle GetNativeHandle() override;
    void SetTitleSuffix(const std::string& suffix) override;
    InstanceExtensions GetInstanceExtensions() override;

private:
    /// The size SDL reports, or 0 x 0 while minimised (SDL keeps the old size then).
    Resolution CurrentSize() const;

    /// Never changes after construction: it names the window in every log line and message and
    /// is the base of the title.
    std::string name;
    /// The state last asked for, not the outcome of the switch: a refused switch is still saved.
    bool fullScreen;
    /// The only owner of the SDL window; `SDL_DestroyWindow` is the deleter.
    std::shared_ptr<SDL_Window> window;
};

} // namespace Window
