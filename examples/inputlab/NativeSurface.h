#pragma once

#include <vulkan/vulkan.h>

#include <cstdint>

namespace InputLab {

#if defined(_WIN32)
/// The window's `HWND`, as `IWindow::GetNativeHandle` gives it.
using NativeWindowHandle = void*;
#else
/// The window's X11 id, as `IWindow::GetNativeHandle` gives it.
using NativeWindowHandle = std::uintptr_t;
#endif

/// The Vulkan surface of a native window: the one place of the lab that knows the platform.
///
/// On X11 it opens a display connection of its own, since the window system's connection is not
/// shared; X window ids are valid from any connection to the same server.
class NativeSurface {
public:
    /// The instance extension this platform's surface needs besides VK_KHR_surface.
    static const char* PlatformExtension() noexcept;

    /// Creates the surface. Engine main thread.
    /// Throws `std::runtime_error` ("Cannot open the X display "<name>" for drawing") and
    /// `VulkanError` when the surface cannot be made.
    NativeSurface(VkInstance instance, NativeWindowHandle window);
    ~NativeSurface();

    NativeSurface(const NativeSurface&) = delete;
    NativeSurface& operator=(const NativeSurface&) = delete;

    VkSurfaceKHR Get() const noexcept { return surface; }

private:
    VkInstance instance;
    VkSurfaceKHR surface = VK_NULL_HANDLE;
    void* display = nullptr; // the X11 Display*; unused on Windows
};

} // namespace InputLab
