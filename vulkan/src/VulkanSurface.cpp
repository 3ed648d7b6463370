// SPDX-License-Identifier: Zlib
#include "PlatformSurface.h"

#include <window/VulkanSurface.h>

#include <charconv>

namespace Window::Vulkan {

SurfaceError::SurfaceError(const std::string& message, VkResult result)
    : std::runtime_error(message)
    , result(result) {}

std::string ResultName(VkResult result) {
    switch (result) {
        // The results that a surface, a swapchain and the calls around them give.
#define WINDOW_VK_RESULT(name)                                                                     \
    case name:                                                                                     \
        return #name;
        WINDOW_VK_RESULT(VK_SUCCESS)
        WINDOW_VK_RESULT(VK_NOT_READY)
        WINDOW_VK_RESULT(VK_TIMEOUT)
        WINDOW_VK_RESULT(VK_INCOMPLETE)
        WINDOW_VK_RESULT(VK_SUBOPTIMAL_KHR)
        WINDOW_VK_RESULT(VK_ERROR_OUT_OF_HOST_MEMORY)
        WINDOW_VK_RESULT(VK_ERROR_OUT_OF_DEVICE_MEMORY)
        WINDOW_VK_RESULT(VK_ERROR_INITIALIZATION_FAILED)
        WINDOW_VK_RESULT(VK_ERROR_DEVICE_LOST)
        WINDOW_VK_RESULT(VK_ERROR_MEMORY_MAP_FAILED)
        WINDOW_VK_RESULT(VK_ERROR_LAYER_NOT_PRESENT)
        WINDOW_VK_RESULT(VK_ERROR_EXTENSION_NOT_PRESENT)
        WINDOW_VK_RESULT(VK_ERROR_FEATURE_NOT_PRESENT)
        WINDOW_VK_RESULT(VK_ERROR_INCOMPATIBLE_DRIVER)
        WINDOW_VK_RESULT(VK_ERROR_TOO_MANY_OBJECTS)
        WINDOW_VK_RESULT(VK_ERROR_FORMAT_NOT_SUPPORTED)
        WINDOW_VK_RESULT(VK_ERROR_SURFACE_LOST_KHR)
        WINDOW_VK_RESULT(VK_ERROR_NATIVE_WINDOW_IN_USE_KHR)
        WINDOW_VK_RESULT(VK_ERROR_OUT_OF_DATE_KHR)
        WINDOW_VK_RESULT(VK_ERROR_VALIDATION_FAILED_EXT)
        WINDOW_VK_RESULT(VK_ERROR_UNKNOWN)
#undef WINDOW_VK_RESULT
    default:
        return "VkResult " + std::to_string(static_cast<int>(result));
    }
}

VkSurfaceKHR CreateSurface(VkInstance instance, IWindow& window,
                           const VkAllocationCallbacks* allocator) {
    if (instance == VK_NULL_HANDLE)
        Detail::Fail("a window", "there is no Vulkan instance (VK_NULL_HANDLE)",
                     VK_ERROR_INITIALIZATION_FAILED);
    return Detail::CreatePlatformSurface(instance, window.GetNativeHandle(), allocator);
}

namespace Detail {

void Fail(const std::string& window, const std::string& cause, VkResult result) {
    throw SurfaceError("Failed to create a Vulkan surface for " + window + ": " + cause, result);
}

PFN_vkVoidFunction RequireFunction(VkInstance instance, const char* name, const char* extension,
                                   const std::string& window) {
    // Asked of the instance rather than linked: the loader gives an extension's entry point only
    // to an instance that enabled it, which is exactly the mistake worth naming.
    const PFN_vkVoidFunction function = vkGetInstanceProcAddr(instance, name);
    if (function == nullptr)
        Fail(window,
             std::string("the instance was created without ") + extension +
                 " (enable every extension that IWindow::GetInstanceExtensions lists)",
             VK_ERROR_EXTENSION_NOT_PRESENT);
    return function;
}

void Check(VkResult result, const char* call, const std::string& window) {
    if (result != VK_SUCCESS)
        Fail(window, std::string(call) + " returned " + ResultName(result), result);
}

std::string Hex(unsigned long long value) {
    // to_chars: no locale can group the digits.
    char digits[2 * sizeof value];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
    return "0x" + std::string(digits, end);
}

} // namespace Detail

} // namespace Window::Vulkan
