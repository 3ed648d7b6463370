// SPDX-License-Identifier: Zlib
#pragma once

// What the portable part of the surface helper shares with the one file per platform that knows
// the window system (VulkanSurfaceWin32.cpp, VulkanSurfaceLinux.cpp).

#include <window/NativeHandle.h>

#include <vulkan/vulkan.h>

#include <string>

namespace Window::Vulkan::Detail {

/// Makes the surface of the window that `handle` names (the platform file). Throws
/// `SurfaceError` as `CreateSurface` documents; `instance` is not null.
VkSurfaceKHR CreatePlatformSurface(VkInstance instance, const NativeHandle& handle,
                                   const VkAllocationCallbacks* allocator);

/// Throws the `SurfaceError` "Failed to create a Vulkan surface for <window>: <cause>".
[[noreturn]] void Fail(const std::string& window, const std::string& cause, VkResult result);

/// The instance's entry point `name`, which `extension` brings; throws `SurfaceError` naming the
/// extension when the instance was created without it.
PFN_vkVoidFunction RequireFunction(VkInstance instance, const char* name, const char* extension,
                                   const std::string& window);

/// Throws `SurfaceError` naming `call` and its result unless `result` is `VK_SUCCESS`.
void Check(VkResult result, const char* call, const std::string& window);

/// "0x" and `value` in hexadecimal, as window ids and handles are shown.
std::string Hex(unsigned long long value);

} // namespace Window::Vulkan::Detail
