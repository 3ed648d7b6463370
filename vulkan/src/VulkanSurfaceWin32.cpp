// SPDX-License-Identifier: Zlib
#include "PlatformSurface.h"

// vulkan_win32.h uses the Win32 types without including their header, so windows.h comes first:
// its core only, without the min and max macros (which libstdc++ may have turned off already).
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
// clang-format off
#include <windows.h>
#include <vulkan/vulkan_win32.h>
// clang-format on

namespace Window::Vulkan::Detail {

VkSurfaceKHR CreatePlatformSurface(VkInstance instance, const NativeHandle& handle,
                                   const VkAllocationCallbacks* allocator) {
    if (handle == nullptr)
        Fail("a window", "Windows gave no window handle (HWND) for it",
             VK_ERROR_INITIALIZATION_FAILED);
    const std::string window = "Win32 window " + Hex(reinterpret_cast<std::uintptr_t>(handle));
    const auto create = reinterpret_cast<PFN_vkCreateWin32SurfaceKHR>(RequireFunction(
        instance, "vkCreateWin32SurfaceKHR", VK_KHR_WIN32_SURFACE_EXTENSION_NAME, window));
    VkWin32SurfaceCreateInfoKHR info{};
    info.sType = VK_STRUCTURE_TYPE_WIN32_SURFACE_CREATE_INFO_KHR;
    // The module that registered the window's class (SDL's), as Vulkan asks.
    info.hinstance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(handle, GWLP_HINSTANCE));
    info.hwnd = handle;
    VkSurfaceKHR surface = VK_NULL_HANDLE;
    Check(create(instance, &info, allocator, &surface), "vkCreateWin32SurfaceKHR", window);
    return surface;
}

} // namespace Window::Vulkan::Detail
