#include "NativeSurface.h"

#include "VulkanError.h"

// The platform headers come last and only here: X11 defines names such as `Window` and `None`
// that clash with the library's. vulkan_win32.h uses the Win32 types without including their
// header, so windows.h goes first.
#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
// clang-format off
#include <windows.h>
#include <vulkan/vulkan_win32.h>
// clang-format on
#else
#include <X11/Xlib.h>
#include <vulkan/vulkan_xlib.h>
#endif

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace InputLab {

#if defined(_WIN32)

const char* NativeSurface::PlatformExtension() noexcept {
    return VK_KHR_WIN32_SURFACE_EXTENSION_NAME;
}

NativeSurface::NativeSurface(VkInstance instance, NativeWindowHandle window) : instance(instance) {
    VkWin32SurfaceCreateInfoKHR info{};
    info.sType = VK_STRUCTURE_TYPE_WIN32_SURFACE_CREATE_INFO_KHR;
    info.hinstance = GetModuleHandleW(nullptr);
    info.hwnd = static_cast<HWND>(window);
    Check(vkCreateWin32SurfaceKHR(instance, &info, nullptr, &surface), "vkCreateWin32SurfaceKHR");
}

NativeSurface::~NativeSurface() {
    vkDestroySurfaceKHR(instance, surface, nullptr);
}

#else

const char* NativeSurface::PlatformExtension() noexcept {
    return VK_KHR_XLIB_SURFACE_EXTENSION_NAME;
}

NativeSurface::NativeSurface(VkInstance instance, NativeWindowHandle window) : instance(instance) {
    if (window == 0)
        throw std::runtime_error("The window system gave no X11 window id to draw into");
    Display* connection = XOpenDisplay(nullptr);
    if (connection == nullptr) {
        const char* name = std::getenv("DISPLAY");
        throw std::runtime_error(std::string("Cannot open the X display \"") +
                                 (name != nullptr ? name : "") + "\" for drawing");
    }
    display = connection;
    VkXlibSurfaceCreateInfoKHR info{};
    info.sType = VK_STRUCTURE_TYPE_XLIB_SURFACE_CREATE_INFO_KHR;
    info.dpy = connection;
    info.window = static_cast<::Window>(window);
    const VkResult result = vkCreateXlibSurfaceKHR(instance, &info, nullptr, &surface);
    if (result != VK_SUCCESS) {
        XCloseDisplay(connection);
        throw VulkanError("vkCreateXlibSurfaceKHR", result);
    }
}

NativeSurface::~NativeSurface() {
    // The surface uses the connection, so it goes first.
    vkDestroySurfaceKHR(instance, surface, nullptr);
    XCloseDisplay(static_cast<Display*>(display));
}

#endif

} // namespace InputLab
