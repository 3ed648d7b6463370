// SPDX-License-Identifier: Zlib
#pragma once

#include <window/InstanceExtensions.h>
#include <window/NativeHandle.h>
#include <window/Resolution.h>
#include <zenkbase/intrudable.h>

#include <string>

namespace Window {

/// The engine's operating-system window, made for a Vulkan renderer.
///
/// Obtained from `SWindowFactory::CreateWindow` as a `Zenk::IntrudablePointer<IWindow>`; the
/// window closes when the last handle goes, saving its size and full-screen state to the
/// configuration ("Window/Resolution", "Window/FullScreen"). Every operation is called on the
/// engine's main thread, one call at a time. A minimised window has the size 0 x 0.
struct IWindow : Zenk::Intrudable {
    // --- state ---

    /// Switches full screen (desktop resolution) on or off; asking for the current state does
    /// nothing. A refused switch is logged as an error, not thrown, and the requested state is
    /// still the one saved at the end. Shows the system cursor after every switch.
    /// Throws `Zenk::MissingInstance` when the message log is not registered.
    virtual void SetFullScreen(bool on) = 0;

    /// Resizes the window; the current size does nothing. Sizes below 700 x 700 are passed on
    /// and the window system keeps the window at the minimum.
    /// Throws `Zenk::MissingInstance` when the message log is not registered.
    virtual void SetResolution(const Resolution& resolution) = 0;

    // --- sizes ---

    /// The window's size in screen coordinates; 0 x 0 while minimised.
    virtual Resolution GetResolution() = 0;

    /// The size of the Vulkan drawable in pixels (the swapchain extent); 0 x 0 while minimised.
    virtual Resolution GetDrawableSize() = 0;

    /// Drawable width over height; NaN while minimised (0 / 0).
    virtual float GetAspectRatio() = 0;

    // --- for the renderer ---

    /// The native handle for creating a Vulkan surface (see `NativeHandle`).
    virtual NativeHandle GetNativeHandle() = 0;

    /// Sets the title to the window's name, " - " and `suffix`; an empty suffix restores the name.
    virtual void SetTitleSuffix(const std::string& suffix) = 0;

    /// The Vulkan instance extensions that a surface for this window needs.
    /// Throws `Common::ApplicationErrorException` ("Failed to obtain extension count\n\t..." or
    /// "Failed to obtain extensions names\n\t...") when the platform cannot list them.
    virtual InstanceExtensions GetInstanceExtensions() = 0;
};

} // namespace Window
