// SPDX-License-Identifier: Zlib
#pragma once

#include <vulkan/vulkan.h>

#include <stdexcept>

namespace InputLab {

/// A Vulkan call that failed; `what()` names the call and the result, as in
/// "vkCreateInstance failed: VK_ERROR_INCOMPATIBLE_DRIVER".
class VulkanError : public std::runtime_error {
public:
    VulkanError(const char* call, VkResult result);

    VkResult Result() const noexcept { return result; }

private:
    VkResult result;
};

/// Throws `VulkanError` for any result below `VK_SUCCESS`; the positive results (such as
/// `VK_SUBOPTIMAL_KHR`) are for the caller to look at.
inline VkResult Check(VkResult result, const char* call) {
    if (result < VK_SUCCESS)
        throw VulkanError(call, result);
    return result;
}

} // namespace InputLab
