// SPDX-License-Identifier: Zlib
#pragma once

// The Vulkan surface of a window in one call, on every window system the library runs on. A
// library of its own (CMake target window::vulkan), so that the window library needs no Vulkan.
// It includes Vulkan's core header only: the platform's headers stay in its sources, and a
// renderer that makes its surface here never includes them itself.

#include <window/IWindow.h>

#include <vulkan/vulkan.h>

#include <stdexcept>
#include <string>

/// The Vulkan surface helper (`window::vulkan`): a window's surface in one call, whatever window
/// system the window is on.
namespace Window::Vulkan {

/// A surface that could not be made. `what()` names the window system, the window and the cause,
/// as in "Failed to create a Vulkan surface for X11 window 0x200002: vkCreateXlibSurfaceKHR
/// returned VK_ERROR_OUT_OF_HOST_MEMORY".
class SurfaceError : public std::runtime_error {
public:
    /// Keeps the finished `message` and the Vulkan result behind it. Any thread.
    SurfaceError(const std::string& message, VkResult result);

    /// The result of the failed Vulkan call; `VK_ERROR_EXTENSION_NOT_PRESENT` when the instance
    /// lacks the window system's surface extension, `VK_ERROR_INITIALIZATION_FAILED` when there
    /// is no instance or no window to draw into.
    VkResult Result() const noexcept { return result; }

private:
    VkResult result;
};

/// The enumerator's name of `result` ("VK_ERROR_SURFACE_LOST_KHR"), or "VkResult <number>" for a
/// value this library does not know. Pure; any thread.
std::string ResultName(VkResult result);

/// Makes the Vulkan surface of `window` on the window system that it lives on: Win32, X11 (through
/// Xlib, on SDL's own connection) or Wayland. `instance` must have been created with the
/// extensions that `window.GetInstanceExtensions()` lists. The caller owns the surface and
/// destroys it with `vkDestroySurfaceKHR`, before the window closes; `allocator` is passed on to
/// Vulkan. Engine main thread, like the window's other calls.
/// Throws `SurfaceError` when the instance is null, when the window system gave no window, when
/// the instance lacks the surface extension, or when Vulkan refuses.
VkSurfaceKHR CreateSurface(VkInstance instance, IWindow& window,
                           const VkAllocationCallbacks* allocator = nullptr);

} // namespace Window::Vulkan
