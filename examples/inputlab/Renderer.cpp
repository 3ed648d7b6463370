// SPDX-License-Identifier: Zlib
#include "Renderer.h"

#include "VulkanError.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace InputLab {

namespace {

VkClearValue ClearColour(Colour colour) {
    VkClearValue value{};
    value.color.float32[0] = colour.red / 255.0F;
    value.color.float32[1] = colour.green / 255.0F;
    value.color.float32[2] = colour.blue / 255.0F;
    value.color.float32[3] = 1.0F;
    return value;
}

void ImageBarrier(VkCommandBuffer commands, VkImage image, VkImageLayout from, VkImageLayout to,
                  VkAccessFlags srcAccess, VkAccessFlags dstAccess, VkPipelineStageFlags srcStage,
                  VkPipelineStageFlags dstStage) {
    VkImageMemoryBarrier barrier{};
    barrier.sType = VK_STRUCTURE_TYPE_IMAGE_MEMORY_BARRIER;
    barrier.srcAccessMask = srcAccess;
    barrier.dstAccessMask = dstAccess;
    barrier.oldLayout = from;
    barrier.newLayout = to;
    barrier.srcQueueFamilyIndex = VK_QUEUE_FAMILY_IGNORED;
    barrier.dstQueueFamilyIndex = VK_QUEUE_FAMILY_IGNORED;
    barrier.image = image;
    barrier.subresourceRange = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};
    vkCmdPipelineBarrier(commands, srcStage, dstStage, 0, 0, nullptr, 0, nullptr, 1, &barrier);
}

} // namespace

Renderer::Renderer(Window::IWindow& window, bool keepFrames)
    : context(window)
    , swapchain(context, keepFrames)
    , keepFrames(keepFrames) {
    VkCommandPoolCreateInfo info{};
    info.sType = VK_STRUCTURE_TYPE_COMMAND_POOL_CREATE_INFO;
    info.flags = VK_COMMAND_POOL_CREATE_RESET_COMMAND_BUFFER_BIT;
    info.queueFamilyIndex = context.QueueFamily();
    Check(vkCreateCommandPool(context.Device(), &info, nullptr, &pool), "vkCreateCommandPool");
    for (FrameSlot& slot : slots)
        CreateSlot(slot);
    overlay = std::make_unique<Overlay>(context, swapchain.RenderPass(), pool,
                                        static_cast<std::uint32_t>(slots.size()));
}

Renderer::~Renderer() {
    const VkDevice device = context.Device();
    vkDeviceWaitIdle(device);
    overlay.reset();
    for (FrameSlot& slot : slots) {
        DestroyCopy(slot);
        vkDestroyFence(device, slot.done, nullptr);
        vkDestroySemaphore(device, slot.acquired, nullptr);
    }
    vkDestroyCommandPool(device, pool, nullptr);
}

void Renderer::CreateSlot(FrameSlot& slot) {
    const VkDevice device = context.Device();
    VkCommandBufferAllocateInfo allocate{};
    allocate.sType = VK_STRUCTURE_TYPE_COMMAND_BUFFER_ALLOCATE_INFO;
    allocate.commandPool = pool;
    allocate.level = VK_COMMAND_BUFFER_LEVEL_PRIMARY;
    allocate.commandBufferCount = 1;
    Check(vkAllocateCommandBuffers(device, &allocate, &slot.commands), "vkAllocateCommandBuffers");
    VkSemaphoreCreateInfo semaphore{};
    semaphore.sType = VK_STRUCTURE_TYPE_SEMAPHORE_CREATE_INFO;
    Check(vkCreateSemaphore(device, &semaphore, nullptr, &slot.acquired), "vkCreateSemaphore");
    VkFenceCreateInfo fence{};
    fence.sType = VK_STRUCTURE_TYPE_FENCE_CREATE_INFO;
    fence.flags = VK_FENCE_CREATE_SIGNALED_BIT; // so that the first wait returns at once
    Check(vkCreateFence(device, &fence, nullptr, &slot.done), "vkCreateFence");
}

void Renderer::DestroyCopy(FrameSlot& slot) noexcept {
    const VkDevice device = context.Device();
    if (slot.mapped != nullptr)
        vkUnmapMemory(device, slot.memory);
    vkDestroyBuffer(device, slot.copy, nullptr);
    vkFreeMemory(device, slot.memory, nullptr);
    slot.copy = VK_NULL_HANDLE;
    slot.memory = VK_NULL_HANDLE;
    slot.mapped = nullptr;
    slot.size = 0;
}

void Renderer::EnsureCopy(FrameSlot& slot, VkExtent2D extent) {
    slot.extent = extent;
    const VkDeviceSize size = VkDeviceSize{extent.width} * extent.height * 4;
    if (slot.size >= size)
        return;
    DestroyCopy(slot);
    const VkDevice device = context.Device();
    VkBufferCreateInfo info{};
    info.sType = VK_STRUCTURE_TYPE_BUFFER_CREATE_INFO;
    info.size = size;
    info.usage = VK_BUFFER_USAGE_TRANSFER_DST_BIT;
    info.sharingMode = VK_SHARING_MODE_EXCLUSIVE;
    Check(vkCreateBuffer(device, &info, nullptr, &slot.copy), "vkCreateBuffer");
    VkMemoryRequirements needs{};
    vkGetBufferMemoryRequirements(device, slot.copy, &needs);
    VkMemoryAllocateInfo allocate{};
    allocate.sType = VK_STRUCTURE_TYPE_MEMORY_ALLOCATE_INFO;
    allocate.allocationSize = needs.size;
    allocate.memoryTypeIndex =
        context.FindMemoryType(needs.memoryTypeBits, VK_MEMORY_PROPERTY_HOST_VISIBLE_BIT |
                                                         VK_MEMORY_PROPERTY_HOST_COHERENT_BIT);
    Check(vkAllocateMemory(device, &allocate, nullptr, &slot.memory), "vkAllocateMemory");
    Check(vkBindBufferMemory(device, slot.copy, slot.memory, 0), "vkBindBufferMemory");
    Check(vkMapMemory(device, slot.memory, 0, size, 0, &slot.mapped), "vkMapMemory");
    slot.size = size;
}

bool Renderer::Draw(const Scene& scene, Window::Resolution drawable) {
    if (drawable.width == 0 || drawable.height == 0)
        return false;
    const VkExtent2D wanted{drawable.width, drawable.height};
    if (outdated || !swapchain.Fits(wanted)) {
        swapchain.Rebuild(wanted);
        outdated = false;
    }

    const VkDevice device = context.Device();
    FrameSlot& slot = slots[current];
    constexpr auto forever = std::numeric_limits<std::uint64_t>::max();
    Check(vkWaitForFences(device, 1, &slot.done, VK_TRUE, forever), "vkWaitForFences");

    std::uint32_t image = 0;
    const VkResult acquired = vkAcquireNextImageKHR(device, swapchain.Handle(), forever,
                                                    slot.acquired, VK_NULL_HANDLE, &image);
    if (acquired == VK_ERROR_OUT_OF_DATE_KHR) {
        outdated = true;
        return false;
    }
    // A suboptimal image still presents; the swapchain is rebuilt before the next frame.
    if (Check(acquired, "vkAcquireNextImageKHR") == VK_SUBOPTIMAL_KHR)
        outdated = true;

    Check(vkResetFences(device, 1, &slot.done), "vkResetFences");
    Record(slot, image, scene);

    const VkPipelineStageFlags waitStage = VK_PIPELINE_STAGE_COLOR_ATTACHMENT_OUTPUT_BIT;
    const VkSemaphore drawn = swapchain.Drawn(image);
    VkSubmitInfo submit{};
    submit.sType = VK_STRUCTURE_TYPE_SUBMIT_INFO;
    submit.waitSemaphoreCount = 1;
    submit.pWaitSemaphores = &slot.acquired;
    submit.pWaitDstStageMask = &waitStage;
    submit.commandBufferCount = 1;
    submit.pCommandBuffers = &slot.commands;
    submit.signalSemaphoreCount = 1;
    submit.pSignalSemaphores = &drawn;
    Check(vkQueueSubmit(context.Queue(), 1, &submit, slot.done), "vkQueueSubmit");

    const VkSwapchainKHR handle = swapchain.Handle();
    VkPresentInfoKHR present{};
    present.sType = VK_STRUCTURE_TYPE_PRESENT_INFO_KHR;
    present.waitSemaphoreCount = 1;
    present.pWaitSemaphores = &drawn;
    present.swapchainCount = 1;
    present.pSwapchains = &handle;
    present.pImageIndices = &image;
    const VkResult presented = vkQueuePresentKHR(context.Queue(), &present);
    if (presented == VK_ERROR_OUT_OF_DATE_KHR || presented == VK_SUBOPTIMAL_KHR)
        outdated = true;
    else
        Check(presented, "vkQueuePresentKHR");

    lastDrawn = current;
    current = (current + 1) % slots.size();
    return true;
}

void Renderer::Record(FrameSlot& slot, std::uint32_t image, const Scene& scene) {
    const VkCommandBuffer commands = slot.commands;
    Check(vkResetCommandBuffer(commands, 0), "vkResetCommandBuffer");
    VkCommandBufferBeginInfo begin{};
    begin.sType = VK_STRUCTURE_TYPE_COMMAND_BUFFER_BEGIN_INFO;
    begin.flags = VK_COMMAND_BUFFER_USAGE_ONE_TIME_SUBMIT_BIT;
    Check(vkBeginCommandBuffer(commands, &begin), "vkBeginCommandBuffer");

    const VkExtent2D extent = swapchain.Extent();
    const VkClearValue background = ClearColour(scene.background);
    VkRenderPassBeginInfo pass{};
    pass.sType = VK_STRUCTURE_TYPE_RENDER_PASS_BEGIN_INFO;
    pass.renderPass = swapchain.RenderPass();
    pass.framebuffer = swapchain.Framebuffer(image);
    pass.renderArea = {{0, 0}, extent};
    pass.clearValueCount = 1;
    pass.pClearValues = &background;
    vkCmdBeginRenderPass(commands, &pass, VK_SUBPASS_CONTENTS_INLINE);
    for (const Rectangle& rectangle : scene.rectangles) {
        // The scene was laid out for the drawable; the surface may have chosen a smaller extent.
        const auto right =
            std::min<std::int64_t>(rectangle.x + std::int64_t{rectangle.width}, extent.width);
        const auto bottom =
            std::min<std::int64_t>(rectangle.y + std::int64_t{rectangle.height}, extent.height);
        if (right <= rectangle.x || bottom <= rectangle.y)
            continue;
        VkClearAttachment attachment{};
        attachment.aspectMask = VK_IMAGE_ASPECT_COLOR_BIT;
        attachment.colorAttachment = 0;
        attachment.clearValue = ClearColour(rectangle.colour);
        VkClearRect area{};
        area.rect = {{rectangle.x, rectangle.y},
                     {static_cast<std::uint32_t>(right - rectangle.x),
                      static_cast<std::uint32_t>(bottom - rectangle.y)}};
        area.layerCount = 1;
        vkCmdClearAttachments(commands, 1, &attachment, 1, &area);
    }
    overlay->Record(commands);
    vkCmdEndRenderPass(commands);
    if (keepFrames)
        RecordCopy(slot, swapchain.Image(image));
    Check(vkEndCommandBuffer(commands), "vkEndCommandBuffer");
}

void Renderer::RecordCopy(FrameSlot& slot, VkImage image) {
    const VkExtent2D extent = swapchain.Extent();
    EnsureCopy(slot, extent);
    const VkCommandBuffer commands = slot.commands;
    ImageBarrier(commands, image, VK_IMAGE_LAYOUT_PRESENT_SRC_KHR,
                 VK_IMAGE_LAYOUT_TRANSFER_SRC_OPTIMAL, VK_ACCESS_COLOR_ATTACHMENT_WRITE_BIT,
                 VK_ACCESS_TRANSFER_READ_BIT, VK_PIPELINE_STAGE_COLOR_ATTACHMENT_OUTPUT_BIT,
                 VK_PIPELINE_STAGE_TRANSFER_BIT);
    VkBufferImageCopy region{};
    region.imageSubresource = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 0, 1};
    region.imageExtent = {extent.width, extent.height, 1};
    vkCmdCopyImageToBuffer(commands, image, VK_IMAGE_LAYOUT_TRANSFER_SRC_OPTIMAL, slot.copy, 1,
                           &region);
    // Presentation needs its layout back; the semaphore that present waits on orders the rest.
    ImageBarrier(commands, image, VK_IMAGE_LAYOUT_TRANSFER_SRC_OPTIMAL,
                 VK_IMAGE_LAYOUT_PRESENT_SRC_KHR, VK_ACCESS_TRANSFER_READ_BIT, 0,
                 VK_PIPELINE_STAGE_TRANSFER_BIT, VK_PIPELINE_STAGE_BOTTOM_OF_PIPE_BIT);
    VkBufferMemoryBarrier toHost{};
    toHost.sType = VK_STRUCTURE_TYPE_BUFFER_MEMORY_BARRIER;
    toHost.srcAccessMask = VK_ACCESS_TRANSFER_WRITE_BIT;
    toHost.dstAccessMask = VK_ACCESS_HOST_READ_BIT;
    toHost.srcQueueFamilyIndex = VK_QUEUE_FAMILY_IGNORED;
    toHost.dstQueueFamilyIndex = VK_QUEUE_FAMILY_IGNORED;
    toHost.buffer = slot.copy;
    toHost.size = VK_WHOLE_SIZE;
    vkCmdPipelineBarrier(commands, VK_PIPELINE_STAGE_TRANSFER_BIT, VK_PIPELINE_STAGE_HOST_BIT, 0, 0,
                         nullptr, 1, &toHost, 0, nullptr);
}

RgbImage Renderer::LastFrame() {
    if (!keepFrames || !lastDrawn)
        throw std::runtime_error("No frame has been drawn, so there is no picture to save");
    FrameSlot& slot = slots[*lastDrawn];
    Check(vkWaitForFences(context.Device(), 1, &slot.done, VK_TRUE,
                          std::numeric_limits<std::uint64_t>::max()),
          "vkWaitForFences");

    const VkFormat format = swapchain.Format();
    const bool bgra = format == VK_FORMAT_B8G8R8A8_UNORM || format == VK_FORMAT_B8G8R8A8_SRGB;
    const bool rgba = format == VK_FORMAT_R8G8B8A8_UNORM || format == VK_FORMAT_R8G8B8A8_SRGB;
    if (!bgra && !rgba)
        throw std::runtime_error("The swapchain's image format (VkFormat " +
                                 std::to_string(static_cast<int>(format)) +
                                 ") is not one the lab can save as a picture");

    RgbImage picture;
    picture.width = slot.extent.width;
    picture.height = slot.extent.height;
    picture.pixels.resize(std::size_t{picture.width} * picture.height * 3);
    const auto* source = static_cast<const std::uint8_t*>(slot.mapped);
    std::uint8_t* target = picture.pixels.data();
    for (std::size_t pixel = 0; pixel < std::size_t{picture.width} * picture.height; ++pixel) {
        const std::uint8_t* texel = source + pixel * 4;
        target[pixel * 3 + 0] = bgra ? texel[2] : texel[0];
        target[pixel * 3 + 1] = texel[1];
        target[pixel * 3 + 2] = bgra ? texel[0] : texel[2];
    }
    return picture;
}

} // namespace InputLab
