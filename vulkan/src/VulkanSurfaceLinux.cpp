// SPDX-License-Identifier: Zlib
#include "PlatformSurface.h"

// Xlib names its window type `Window`, which would collide with the library's namespace; in this
// file the X type is X11Window. Only the Vulkan structure takes it, so nothing changes at link
// time. The library links no X or Wayland library: it only passes SDL's pointers on to Vulkan.
#define Window X11Window
#include <X11/Xlib.h>
#include <vulkan/vulkan_xlib.h>
#undef Window
#include <vulkan/vulkan_wayland.h>

namespace Window::Vulkan::Detail {

namespace {

VkSurfaceKHR CreateXlibSurface(VkInstance instance, const NativeHandle::X11& x11,
                               const VkAllocationCallbacks* allocator) {
    const std::string window = "X11 window " + Hex(x11.window);
    const auto create = reinterpret_cast<PFN_vkCreateXlibSurfaceKHR>(RequireFunction(
        instance, "vkCreateXlibSurfaceKHR", VK_KHR_XLIB_SURFACE_EXTENSION_NAME, window));
    VkXlibSurfaceCreateInfoKHR info{};
    info.sType = VK_STRUCTURE_TYPE_XLIB_SURFACE_CREATE_INFO_KHR;
    info.dpy = x11.display;
    info.window = x11.window;
    VkSurfaceKHR surface = VK_NULL_HANDLE;
    Check(create(instance, &info, allocator, &surface), "vkCreateXlibSurfaceKHR", window);
    return surface;
}

VkSurfaceKHR CreateWaylandSurface(VkInstance instance, const NativeHandle::Wayland& wayland,
                                  const VkAllocationCallbacks* allocator) {
    const std::string window =
        "Wayland surface " + Hex(reinterpret_cast<std::uintptr_t>(wayland.surface));
    const auto create = reinterpret_cast<PFN_vkCreateWaylandSurfaceKHR>(RequireFunction(
        instance, "vkCreateWaylandSurfaceKHR", VK_KHR_WAYLAND_SURFACE_EXTENSION_NAME, window));
    VkWaylandSurfaceCreateInfoKHR info{};
    info.sType = VK_STRUCTURE_TYPE_WAYLAND_SURFACE_CREATE_INFO_KHR;
    info.display = wayland.display;
    info.surface = wayland.surface;
    VkSurfaceKHR surface = VK_NULL_HANDLE;
    Check(create(instance, &info, allocator, &surface), "vkCreateWaylandSurfaceKHR", window);
    return surface;
}

} // namespace

// SDL 2 reports X11 windows through Xlib only (never xcb), so Xlib's surface is the one made.
VkSurfaceKHR CreatePlatformSurface(VkInstance instance, const NativeHandle& handle,
                                   const VkAllocationCallbacks* allocator) {
    switch (handle.system) {
    case WindowSystem::X11:
        return CreateXlibSurface(instance, handle.x11, allocator);
    case WindowSystem::Wayland:
        return CreateWaylandSurface(instance, handle.wayland, allocator);
    case WindowSystem::Unknown:
        break;
    }
    Fail("a window",
         "its window system did not describe it (SDL's video driver has no native windows)",
         VK_ERROR_INITIALIZATION_FAILED);
}

} // namespace Window::Vulkan::Detail
