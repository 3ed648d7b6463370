// SPDX-License-Identifier: Zlib
#include "VulkanError.h"

#include <window/VulkanSurface.h>

#include <string>

namespace InputLab {

namespace {

std::string Describe(const char* call, VkResult result) {
    return std::string(call) + " failed: " + Window::Vulkan::ResultName(result);
}

} // namespace

VulkanError::VulkanError(const char* call, VkResult result)
    : std::runtime_error(Describe(call, result))
    , result(result) {}

} // namespace InputLab
