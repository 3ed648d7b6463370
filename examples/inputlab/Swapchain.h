// SPDX-License-Identifier: Zlib
#pragma once

#include "VulkanContext.h"

#include <vulkan/vulkan.h>

#include <cstdint>
#include <vector>

namespace InputLab {

/// The swapchain of the window's surface with what each of its images needs: a view, a
/// framebuffer of the render pass and a semaphore that presentation waits on.
class Swapchain {
public:
    /// Chooses the format and makes the render pass; the images come with `Rebuild`.
    /// `readable` asks for images that can be copied out (for screenshots).
    /// Throws `VulkanError`, or `std::runtime_error` when the surface cannot give what is asked.
    Swapchain(const VulkanContext& context, bool readable);
    ~Swapchain();

    Swapchain(const Swapchain&) = delete;
    Swapchain& operator=(const Swapchain&) = delete;

    /// Replaces the images with new ones of about `wanted` (the surface may insist on another
    /// size). Waits until the device is idle first. Throws `VulkanError`.
    void Rebuild(VkExtent2D wanted);

    /// Whether a rebuild for `wanted` would give the extent the images already have. Asks the
    /// surface: while a window is being resized, the surface can lag behind the window system's
    /// report of the new size. Throws `VulkanError`.
    bool Fits(VkExtent2D wanted) const;

    VkSwapchainKHR Handle() const noexcept { return swapchain; }
    VkExtent2D Extent() const noexcept { return extent; }
    VkFormat Format() const noexcept { return format.format; }
    VkRenderPass RenderPass() const noexcept { return renderPass; }
    std::size_t ImageCount() const noexcept { return images.size(); }
    VkImage Image(std::size_t index) const { return images.at(index); }
    VkFramebuffer Framebuffer(std::size_t index) const { return framebuffers.at(index); }
    /// Signalled by the frame that drew image `index`, waited on by its presentation.
    VkSemaphore Drawn(std::size_t index) const { return drawn.at(index); }

private:
    VkSurfaceCapabilitiesKHR Capabilities() const;
    static VkExtent2D Clamp(VkExtent2D wanted, const VkSurfaceCapabilitiesKHR& capabilities);
    void DestroyImages() noexcept;

    const VulkanContext& context;
    bool readable;
    VkSurfaceFormatKHR format{};
    VkRenderPass renderPass = VK_NULL_HANDLE;
    VkSwapchainKHR swapchain = VK_NULL_HANDLE;
    VkExtent2D extent{};
    std::vector<VkImage> images;
    std::vector<VkImageView> views;
    std::vector<VkFramebuffer> framebuffers;
    std::vector<VkSemaphore> drawn;
};

} // namespace InputLab
