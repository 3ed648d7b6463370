// SPDX-License-Identifier: Zlib
#pragma once

#include "Overlay.h"
#include "PngFile.h"
#include "Scene.h"
#include "Swapchain.h"
#include "VulkanContext.h"

#include <window/IWindow.h>

#include <vulkan/vulkan.h>

#include <array>
#include <memory>
#include <optional>

namespace InputLab {

/// Draws scenes into the window: the render pass clears to the background,
/// `vkCmdClearAttachments` paints each rectangle, and the overlay (Dear ImGui) draws over them.
/// Everything it knows of the window comes from `IWindow`: instance extensions, native handle and
/// drawable size.
///
/// The swapchain is rebuilt when the drawable size changes or the surface reports it out of date
/// or suboptimal; while the window is minimised (drawable 0 x 0) nothing is drawn.
/// Engine main thread only.
class Renderer {
public:
    /// `keepFrames` copies every frame out of the swapchain, so that `LastFrame` can give it.
    /// Throws what `VulkanContext` and `Swapchain` throw.
    Renderer(Window::IWindow& window, bool keepFrames);
    ~Renderer();

    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// Draws and presents one frame of `scene`, laid out for `drawable` (the window's
    /// `GetDrawableSize` at the time the scene was built). Returns false when no frame was
    /// presented: minimised, or the swapchain had to be rebuilt first. Throws `VulkanError`.
    bool Draw(const Scene& scene, Window::Resolution drawable);

    /// The last presented frame, as it was presented; waits for the device. Needs `keepFrames`.
    /// Throws `std::runtime_error` ("No frame has been drawn ...") before the first frame.
    RgbImage LastFrame();

    const std::string& DeviceName() const noexcept { return context.DeviceName(); }

    /// The overlay that `Draw` draws over each scene: build its frame before calling `Draw`.
    Overlay& GetOverlay() noexcept { return *overlay; }

private:
    /// What one frame in flight owns; two of them let the CPU prepare a frame while the
    /// device finishes the previous one.
    struct FrameSlot {
        VkCommandBuffer commands = VK_NULL_HANDLE;
        VkSemaphore acquired = VK_NULL_HANDLE;
        VkFence done = VK_NULL_HANDLE;
        // The read-back copy of the frame, when frames are kept.
        VkBuffer copy = VK_NULL_HANDLE;
        VkDeviceMemory memory = VK_NULL_HANDLE;
        VkDeviceSize size = 0;
        void* mapped = nullptr;
        VkExtent2D extent{};
    };

    void CreateSlot(FrameSlot& slot);
    void DestroyCopy(FrameSlot& slot) noexcept;
    void EnsureCopy(FrameSlot& slot, VkExtent2D extent);
    void Record(FrameSlot& slot, std::uint32_t image, const Scene& scene);
    void RecordCopy(FrameSlot& slot, VkImage image);

    VulkanContext context;
    Swapchain swapchain;
    bool keepFrames;
    VkCommandPool pool = VK_NULL_HANDLE;
    std::array<FrameSlot, 2> slots{};
    std::unique_ptr<Overlay> overlay;
    std::size_t current = 0;
    std::optional<std::size_t> lastDrawn;
    bool outdated = true;
};

} // namespace InputLab
