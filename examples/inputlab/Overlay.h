// SPDX-License-Identifier: Zlib
#pragma once

#include "VulkanContext.h"

#include <window/Resolution.h>

#include <vulkan/vulkan.h>

#include <cstdint>

struct ImGuiContext;

namespace InputLab {

/// Where the pointer is and which buttons are down, as the lab's reactors last heard it. The
/// overlay is told this rather than reading any event itself: it only draws.
struct OverlayPointer {
    bool seen = false;
    float x = 0;
    float y = 0;
    bool left = false;
    bool right = false;
    bool middle = false;
};

/// Dear ImGui and its Vulkan backend, drawing over the lab's scene inside the renderer's render
/// pass. Each frame runs `Begin`, the panels' ImGui calls, `End`; the renderer then records the
/// result with `Record`. A frame is built even when none is presented, so that ImGui's state
/// advances with the frames alone. One per process (ImGui's backend keeps global state).
/// Engine main thread only.
class Overlay {
public:
    /// Makes ImGui's context and the backend's pipeline for `renderPass` and uploads the font
    /// with a command buffer from `pool`, waiting for it. `framesInFlight` is how many frames
    /// the renderer records before it waits for the oldest. Throws `VulkanError`.
    Overlay(const VulkanContext& context, VkRenderPass renderPass, VkCommandPool pool,
            std::uint32_t framesInFlight);
    ~Overlay();

    Overlay(const Overlay&) = delete;
    Overlay& operator=(const Overlay&) = delete;

    /// Starts a frame laid out for `drawable` pixels, `seconds` after the last one.
    void Begin(Window::Resolution drawable, float seconds, const OverlayPointer& pointer);

    /// Ends the frame begun last; what it drew waits for `Record`.
    void End();

    /// Records the last ended frame's drawing into `commands`, inside the render pass. Draws
    /// nothing before the first `End` or when the frame had no area.
    void Record(VkCommandBuffer commands);

private:
    void UploadFont(VkCommandPool pool);

    const VulkanContext& context;
    VkDescriptorPool descriptors = VK_NULL_HANDLE;
    ImGuiContext* imgui = nullptr;
    bool backend = false;
    bool ended = false;
};

} // namespace InputLab
