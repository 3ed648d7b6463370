// SPDX-License-Identifier: Zlib
#include "VulkanContext.h"

#include "VulkanError.h"

#include <window/VulkanSurface.h>

#include <cstring>
#include <stdexcept>
#include <vector>

namespace InputLab {

namespace {

bool HasDeviceExtension(VkPhysicalDevice device, const char* name) {
    std::uint32_t count = 0;
    Check(vkEnumerateDeviceExtensionProperties(device, nullptr, &count, nullptr),
          "vkEnumerateDeviceExtensionProperties");
    std::vector<VkExtensionProperties> extensions(count);
    Check(vkEnumerateDeviceExtensionProperties(device, nullptr, &count, extensions.data()),
          "vkEnumerateDeviceExtensionProperties");
    for (const auto& extension : extensions)
        if (std::strcmp(extension.extensionName, name) == 0)
            return true;
    return false;
}

/// A queue family that draws and presents to `surface`, or -1.
long FindQueueFamily(VkPhysicalDevice device, VkSurfaceKHR surface) {
    std::uint32_t count = 0;
    vkGetPhysicalDeviceQueueFamilyProperties(device, &count, nullptr);
    std::vector<VkQueueFamilyProperties> families(count);
    vkGetPhysicalDeviceQueueFamilyProperties(device, &count, families.data());
    for (std::uint32_t index = 0; index < count; ++index) {
        VkBool32 presents = VK_FALSE;
        Check(vkGetPhysicalDeviceSurfaceSupportKHR(device, index, surface, &presents),
              "vkGetPhysicalDeviceSurfaceSupportKHR");
        if ((families[index].queueFlags & VK_QUEUE_GRAPHICS_BIT) != 0 && presents == VK_TRUE)
            return index;
    }
    return -1;
}

VkInstance CreateInstance(Window::IWindow& window) {
    // The window knows which extensions its surface needs; the lab adds none of its own.
    const Window::InstanceExtensions extensions = window.GetInstanceExtensions();
    VkApplicationInfo application{};
    application.sType = VK_STRUCTURE_TYPE_APPLICATION_INFO;
    application.pApplicationName = "inputlab";
    application.applicationVersion = VK_MAKE_VERSION(1, 0, 0);
    application.apiVersion = VK_API_VERSION_1_0;

    VkInstanceCreateInfo info{};
    info.sType = VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO;
    info.pApplicationInfo = &application;
    info.enabledExtensionCount = extensions.count;
    info.ppEnabledExtensionNames = extensions.names.get();
    VkInstance instance = VK_NULL_HANDLE;
    Check(vkCreateInstance(&info, nullptr, &instance), "vkCreateInstance");
    return instance;
}

} // namespace

VulkanContext::VulkanContext(Window::IWindow& window) : instance(CreateInstance(window)) {
    try {
        surface = Window::Vulkan::CreateSurface(instance, window);
        PickDevice();
        CreateDevice();
    } catch (...) {
        vkDestroySurfaceKHR(instance, surface, nullptr);
        vkDestroyInstance(instance, nullptr);
        throw;
    }
}

VulkanContext::~VulkanContext() {
    vkDestroyDevice(device, nullptr);
    vkDestroySurfaceKHR(instance, surface, nullptr);
    vkDestroyInstance(instance, nullptr);
}

void VulkanContext::PickDevice() {
    std::uint32_t count = 0;
    Check(vkEnumeratePhysicalDevices(instance, &count, nullptr), "vkEnumeratePhysicalDevices");
    std::vector<VkPhysicalDevice> devices(count);
    Check(vkEnumeratePhysicalDevices(instance, &count, devices.data()),
          "vkEnumeratePhysicalDevices");
    if (devices.empty())
        throw std::runtime_error("No Vulkan device can draw into the window: the system lists "
                                 "no device (is a Vulkan driver such as mesa-vulkan-drivers "
                                 "installed?)");
    // The first device that can present wins: the lab draws little, so any device will do.
    for (VkPhysicalDevice candidate : devices) {
        if (!HasDeviceExtension(candidate, VK_KHR_SWAPCHAIN_EXTENSION_NAME))
            continue;
        const long family = FindQueueFamily(candidate, surface);
        if (family < 0)
            continue;
        physicalDevice = candidate;
        queueFamily = static_cast<std::uint32_t>(family);
        VkPhysicalDeviceProperties properties{};
        vkGetPhysicalDeviceProperties(candidate, &properties);
        deviceName = properties.deviceName;
        return;
    }
    throw std::runtime_error("No Vulkan device can draw into the window: none of the " +
                             std::to_string(devices.size()) +
                             " devices has a queue that draws and presents to it");
}

void VulkanContext::CreateDevice() {
    const float priority = 1.0F;
    VkDeviceQueueCreateInfo queueInfo{};
    queueInfo.sType = VK_STRUCTURE_TYPE_DEVICE_QUEUE_CREATE_INFO;
    queueInfo.queueFamilyIndex = queueFamily;
    queueInfo.queueCount = 1;
    queueInfo.pQueuePriorities = &priority;

    const char* const extensions[] = {VK_KHR_SWAPCHAIN_EXTENSION_NAME};
    VkDeviceCreateInfo info{};
    info.sType = VK_STRUCTURE_TYPE_DEVICE_CREATE_INFO;
    info.queueCreateInfoCount = 1;
    info.pQueueCreateInfos = &queueInfo;
    info.enabledExtensionCount = 1;
    info.ppEnabledExtensionNames = extensions;
    Check(vkCreateDevice(physicalDevice, &info, nullptr, &device), "vkCreateDevice");
    vkGetDeviceQueue(device, queueFamily, 0, &queue);
}

std::uint32_t VulkanContext::FindMemoryType(std::uint32_t allowed,
                                            VkMemoryPropertyFlags properties) const {
    VkPhysicalDeviceMemoryProperties memory{};
    vkGetPhysicalDeviceMemoryProperties(physicalDevice, &memory);
    for (std::uint32_t index = 0; index < memory.memoryTypeCount; ++index)
        if ((allowed & (1U << index)) != 0 &&
            (memory.memoryTypes[index].propertyFlags & properties) == properties)
            return index;
    throw std::runtime_error("The Vulkan device has no memory that the host can read");
}

} // namespace InputLab
