// SPDX-License-Identifier: Zlib
#pragma once

#include <window/IWindow.h>

#include <vulkan/vulkan.h>

#include <string>

namespace InputLab {

/// The Vulkan objects that live as long as the window: instance, surface, device and queue.
/// Made from what `IWindow` offers and nothing else: its instance extensions, and its surface from
/// the library's one-call helper.
class VulkanContext {
public:
    /// Engine main thread. Throws `VulkanError`, `Window::Vulkan::SurfaceError`, or
    /// `std::runtime_error` ("No Vulkan device can draw into the window: <reason>") when no
    /// device fits.
    explicit VulkanContext(Window::IWindow& window);
    ~VulkanContext();

    VulkanContext(const VulkanContext&) = delete;
    VulkanContext& operator=(const VulkanContext&) = delete;

    VkInstance Instance() const noexcept { return instance; }
    VkSurfaceKHR Surface() const noexcept { return surface; }
    VkPhysicalDevice PhysicalDevice() const noexcept { return physicalDevice; }
    VkDevice Device() const noexcept { return device; }
    VkQueue Queue() const noexcept { return queue; }
    std::uint32_t QueueFamily() const noexcept { return queueFamily; }
    const std::string& DeviceName() const noexcept { return deviceName; }

    /// A memory type among `allowed` (a resource's type bits) with all of `properties`.
    /// Throws `std::runtime_error` when the device has none.
    std::uint32_t FindMemoryType(std::uint32_t allowed, VkMemoryPropertyFlags properties) const;

private:
    void PickDevice();
    void CreateDevice();

    VkInstance instance = VK_NULL_HANDLE;
    VkSurfaceKHR surface = VK_NULL_HANDLE;
    VkPhysicalDevice physicalDevice = VK_NULL_HANDLE;
    std::uint32_t queueFamily = 0;
    std::string deviceName;
    VkDevice device = VK_NULL_HANDLE;
    VkQueue queue = VK_NULL_HANDLE;
};

} // namespace InputLab
