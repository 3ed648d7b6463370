// SPDX-License-Identifier: Zlib
#include "Swapchain.h"

#include "VulkanError.h"

#include <algorithm>
#include <stdexcept>

namespace InputLab {

namespace {

VkSurfaceFormatKHR ChooseFormat(const VulkanContext& context) {
    std::uint32_t count = 0;
    Check(vkGetPhysicalDeviceSurfaceFormatsKHR(context.PhysicalDevice(), context.Surface(), &count,
                                               nullptr),
          "vkGetPhysicalDeviceSurfaceFormatsKHR");
    std::vector<VkSurfaceFormatKHR> formats(count);
    Check(vkGetPhysicalDeviceSurfaceFormatsKHR(context.PhysicalDevice(), context.Surface(), &count,
                                               formats.data()),
          "vkGetPhysicalDeviceSurfaceFormatsKHR");
    if (formats.empty())
        throw std::runtime_error("The window's Vulkan surface offers no image format");
    // UNORM stores the scene's 8-bit colours unchanged, so a screenshot holds exactly them.
    for (const VkFormat wanted : {VK_FORMAT_B8G8R8A8_UNORM, VK_FORMAT_R8G8B8A8_UNORM})
        for (const auto& format : formats)
            if (format.format == wanted)
                return format;
    return formats.front();
}

VkRenderPass CreateRenderPass(VkDevice device, VkFormat format) {
    VkAttachmentDescription colour{};
    colour.format = format;
    colour.samples = VK_SAMPLE_COUNT_1_BIT;
    colour.loadOp = VK_ATTACHMENT_LOAD_OP_CLEAR; // the background
    colour.storeOp = VK_ATTACHMENT_STORE_OP_STORE;
    colour.stencilLoadOp = VK_ATTACHMENT_LOAD_OP_DONT_CARE;
    colour.stencilStoreOp = VK_ATTACHMENT_STORE_OP_DONT_CARE;
    colour.initialLayout = VK_IMAGE_LAYOUT_UNDEFINED;
    colour.finalLayout = VK_IMAGE_LAYOUT_PRESENT_SRC_KHR;

    VkAttachmentReference reference{0, VK_IMAGE_LAYOUT_COLOR_ATTACHMENT_OPTIMAL};
    VkSubpassDescription subpass{};
    subpass.pipelineBindPoint = VK_PIPELINE_BIND_POINT_GRAPHICS;
    subpass.colorAttachmentCount = 1;
    subpass.pColorAttachments = &reference;

    // The image may still be read by the presentation engine until the acquire semaphore, which
    // is waited on at this stage, says otherwise.
    VkSubpassDependency dependency{};
    dependency.srcSubpass = VK_SUBPASS_EXTERNAL;
    dependency.dstSubpass = 0;
    dependency.srcStageMask = VK_PIPELINE_STAGE_COLOR_ATTACHMENT_OUTPUT_BIT;
    dependency.dstStageMask = VK_PIPELINE_STAGE_COLOR_ATTACHMENT_OUTPUT_BIT;
    dependency.dstAccessMask = VK_ACCESS_COLOR_ATTACHMENT_WRITE_BIT;

    VkRenderPassCreateInfo info{};
    info.sType = VK_STRUCTURE_TYPE_RENDER_PASS_CREATE_INFO;
    info.attachmentCount = 1;
    info.pAttachments = &colour;
    info.subpassCount = 1;
    info.pSubpasses = &subpass;
    info.dependencyCount = 1;
    info.pDependencies = &dependency;
    VkRenderPass renderPass = VK_NULL_HANDLE;
    Check(vkCreateRenderPass(device, &info, nullptr, &renderPass), "vkCreateRenderPass");
    return renderPass;
}

} // namespace

Swapchain::Swapchain(const VulkanContext& context, bool readable)
    : context(context)
    , readable(readable)
    , format(ChooseFormat(context))
    , renderPass(CreateRenderPass(context.Device(), format.format)) {}

Swapchain::~Swapchain() {
    DestroyImages();
    vkDestroySwapchainKHR(context.Device(), swapchain, nullptr);
    vkDestroyRenderPass(context.Device(), renderPass, nullptr);
}

VkSurfaceCapabilitiesKHR Swapchain::Capabilities() const {
    VkSurfaceCapabilitiesKHR capabilities{};
    Check(vkGetPhysicalDeviceSurfaceCapabilitiesKHR(context.PhysicalDevice(), context.Surface(),
                                                    &capabilities),
          "vkGetPhysicalDeviceSurfaceCapabilitiesKHR");
    return capabilities;
}

VkExtent2D Swapchain::Clamp(VkExtent2D wanted, const VkSurfaceCapabilitiesKHR& capabilities) {
    return {std::clamp(wanted.width, capabilities.minImageExtent.width,
                       capabilities.maxImageExtent.width),
            std::clamp(wanted.height, capabilities.minImageExtent.height,
                       capabilities.maxImageExtent.height)};
}

bool Swapchain::Fits(VkExtent2D wanted) const {
    if (swapchain == VK_NULL_HANDLE)
        return false;
    if (wanted.width == extent.width && wanted.height == extent.height)
        return true;
    // Asked only while the two disagree, which is rare unless the window system keeps the window
    // at another size than it reports (full screen without a window manager does).
    const VkExtent2D possible = Clamp(wanted, Capabilities());
    return possible.width == extent.width && possible.height == extent.height;
}

void Swapchain::DestroyImages() noexcept {
    const VkDevice device = context.Device();
    for (VkSemaphore semaphore : drawn)
        vkDestroySemaphore(device, semaphore, nullptr);
    for (VkFramebuffer framebuffer : framebuffers)
        vkDestroyFramebuffer(device, framebuffer, nullptr);
    for (VkImageView view : views)
        vkDestroyImageView(device, view, nullptr);
    drawn.clear();
    framebuffers.clear();
    views.clear();
    images.clear();
}

void Swapchain::Rebuild(VkExtent2D wanted) {
    const VkDevice device = context.Device();
    Check(vkDeviceWaitIdle(device), "vkDeviceWaitIdle");

    const VkSurfaceCapabilitiesKHR capabilities = Capabilities();
    VkImageUsageFlags usage = VK_IMAGE_USAGE_COLOR_ATTACHMENT_BIT;
    if (readable) {
        if ((capabilities.supportedUsageFlags & VK_IMAGE_USAGE_TRANSFER_SRC_BIT) == 0)
            throw std::runtime_error("The window's Vulkan surface does not let its images be "
                                     "copied, so no screenshot can be taken");
        usage |= VK_IMAGE_USAGE_TRANSFER_SRC_BIT;
    }
    extent = Clamp(wanted, capabilities);
    std::uint32_t imageCount = capabilities.minImageCount + 1;
    if (capabilities.maxImageCount != 0)
        imageCount = std::min(imageCount, capabilities.maxImageCount);

    VkSwapchainCreateInfoKHR info{};
    info.sType = VK_STRUCTURE_TYPE_SWAPCHAIN_CREATE_INFO_KHR;
    info.surface = context.Surface();
    info.minImageCount = imageCount;
    info.imageFormat = format.format;
    info.imageColorSpace = format.colorSpace;
    info.imageExtent = extent;
    info.imageArrayLayers = 1;
    info.imageUsage = usage;
    info.imageSharingMode = VK_SHARING_MODE_EXCLUSIVE;
    info.preTransform = capabilities.currentTransform;
    info.compositeAlpha = VK_COMPOSITE_ALPHA_OPAQUE_BIT_KHR;
    // FIFO is the one mode every driver has, and it paces the frames to the display.
    info.presentMode = VK_PRESENT_MODE_FIFO_KHR;
    info.clipped = VK_TRUE;
    info.oldSwapchain = swapchain;
    VkSwapchainKHR replacement = VK_NULL_HANDLE;
    Check(vkCreateSwapchainKHR(device, &info, nullptr, &replacement), "vkCreateSwapchainKHR");
    DestroyImages();
    vkDestroySwapchainKHR(device, swapchain, nullptr);
    swapchain = replacement;

    std::uint32_t count = 0;
    Check(vkGetSwapchainImagesKHR(device, swapchain, &count, nullptr), "vkGetSwapchainImagesKHR");
    images.resize(count);
    Check(vkGetSwapchainImagesKHR(device, swapchain, &count, images.data()),
          "vkGetSwapchainImagesKHR");

    for (VkImage image : images) {
        VkImageViewCreateInfo viewInfo{};
        viewInfo.sType = VK_STRUCTURE_TYPE_IMAGE_VIEW_CREATE_INFO;
        viewInfo.image = image;
        viewInfo.viewType = VK_IMAGE_VIEW_TYPE_2D;
        viewInfo.format = format.format;
        viewInfo.subresourceRange = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};
        VkImageView view = VK_NULL_HANDLE;
        Check(vkCreateImageView(device, &viewInfo, nullptr, &view), "vkCreateImageView");
        views.push_back(view);

        VkFramebufferCreateInfo framebufferInfo{};
        framebufferInfo.sType = VK_STRUCTURE_TYPE_FRAMEBUFFER_CREATE_INFO;
        framebufferInfo.renderPass = renderPass;
        framebufferInfo.attachmentCount = 1;
        framebufferInfo.pAttachments = &view;
        framebufferInfo.width = extent.width;
        framebufferInfo.height = extent.height;
        framebufferInfo.layers = 1;
        VkFramebuffer framebuffer = VK_NULL_HANDLE;
        Check(vkCreateFramebuffer(device, &framebufferInfo, nullptr, &framebuffer),
              "vkCreateFramebuffer");
        framebuffers.push_back(framebuffer);

        VkSemaphoreCreateInfo semaphoreInfo{};
        semaphoreInfo.sType = VK_STRUCTURE_TYPE_SEMAPHORE_CREATE_INFO;
        VkSemaphore semaphore = VK_NULL_HANDLE;
        Check(vkCreateSemaphore(device, &semaphoreInfo, nullptr, &semaphore), "vkCreateSemaphore");
        drawn.push_back(semaphore);
    }
}

} // namespace InputLab
