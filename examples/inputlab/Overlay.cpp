// SPDX-License-Identifier: Zlib
#include "Overlay.h"

#include "VulkanError.h"

#include <algorithm>
#include <imgui.h>
#include <imgui_impl_vulkan.h>
#include <limits>

namespace InputLab {

namespace {

// The backend checks every result it gets through this; it cannot return an error itself.
void CheckBackendResult(VkResult result) {
    Check(result, "Dear ImGui's Vulkan backend");
}

} // namespace

Overlay::Overlay(const VulkanContext& context, VkRenderPass renderPass, VkCommandPool pool,
                 std::uint32_t framesInFlight)
    : context(context) {
    imgui = ImGui::CreateContext();
    try {
        ImGuiIO& io = ImGui::GetIO();
        // Nothing of a run may depend on an earlier one: no layout file is read or written.
        io.IniFilename = nullptr;
        io.LogFilename = nullptr;
        io.ConfigFlags |= ImGuiConfigFlags_NoMouseCursorChange;
        ImGui::StyleColorsDark();
        ImGui::GetStyle().WindowRounding = 0;

        // The font texture's sampler is the only descriptor set the backend makes.
        VkDescriptorPoolSize size{VK_DESCRIPTOR_TYPE_COMBINED_IMAGE_SAMPLER, 1};
        VkDescriptorPoolCreateInfo poolInfo{};
        poolInfo.sType = VK_STRUCTURE_TYPE_DESCRIPTOR_POOL_CREATE_INFO;
        poolInfo.flags = VK_DESCRIPTOR_POOL_CREATE_FREE_DESCRIPTOR_SET_BIT;
        poolInfo.maxSets = 1;
        poolInfo.poolSizeCount = 1;
        poolInfo.pPoolSizes = &size;
        Check(vkCreateDescriptorPool(context.Device(), &poolInfo, nullptr, &descriptors),
              "vkCreateDescriptorPool");

        ImGui_ImplVulkan_InitInfo info{};
        info.Instance = context.Instance();
        info.PhysicalDevice = context.PhysicalDevice();
        info.Device = context.Device();
        info.QueueFamily = context.QueueFamily();
        info.Queue = context.Queue();
        info.DescriptorPool = descriptors;
        info.Subpass = 0;
        // The backend keeps one vertex buffer per image count and takes them in turn; the
        // renderer waits for a frame before it records over its slot, so as many as it has in
        // flight are enough.
        info.MinImageCount = std::max<std::uint32_t>(framesInFlight, 2);
        info.ImageCount = info.MinImageCount;
        info.MSAASamples = VK_SAMPLE_COUNT_1_BIT;
        info.CheckVkResultFn = CheckBackendResult;
        if (!ImGui_ImplVulkan_Init(&info, renderPass))
            throw std::runtime_error("Dear ImGui's Vulkan backend did not start");
        backend = true;
        UploadFont(pool);
    } catch (...) {
        if (backend)
            ImGui_ImplVulkan_Shutdown();
        vkDestroyDescriptorPool(context.Device(), descriptors, nullptr);
        ImGui::DestroyContext(imgui);
        throw;
    }
}

Overlay::~Overlay() {
    // The renderer waited for the device before its members go.
    ImGui_ImplVulkan_Shutdown();
    vkDestroyDescriptorPool(context.Device(), descriptors, nullptr);
    ImGui::DestroyContext(imgui);
}

void Overlay::UploadFont(VkCommandPool pool) {
    const VkDevice device = context.Device();
    VkCommandBufferAllocateInfo allocate{};
    allocate.sType = VK_STRUCTURE_TYPE_COMMAND_BUFFER_ALLOCATE_INFO;
    allocate.commandPool = pool;
    allocate.level = VK_COMMAND_BUFFER_LEVEL_PRIMARY;
    allocate.commandBufferCount = 1;
    VkCommandBuffer commands = VK_NULL_HANDLE;
    Check(vkAllocateCommandBuffers(device, &allocate, &commands), "vkAllocateCommandBuffers");
    struct Release {
        VkDevice device;
        VkCommandPool pool;
        VkCommandBuffer commands;
        ~Release() { vkFreeCommandBuffers(device, pool, 1, &commands); }
    } release{device, pool, commands};

    VkCommandBufferBeginInfo begin{};
    begin.sType = VK_STRUCTURE_TYPE_COMMAND_BUFFER_BEGIN_INFO;
    begin.flags = VK_COMMAND_BUFFER_USAGE_ONE_TIME_SUBMIT_BIT;
    Check(vkBeginCommandBuffer(commands, &begin), "vkBeginCommandBuffer");
    ImGui_ImplVulkan_CreateFontsTexture(commands);
    Check(vkEndCommandBuffer(commands), "vkEndCommandBuffer");
    VkSubmitInfo submit{};
    submit.sType = VK_STRUCTURE_TYPE_SUBMIT_INFO;
    submit.commandBufferCount = 1;
    submit.pCommandBuffers = &commands;
    Check(vkQueueSubmit(context.Queue(), 1, &submit, VK_NULL_HANDLE), "vkQueueSubmit");
    Check(vkQueueWaitIdle(context.Queue()), "vkQueueWaitIdle");
    ImGui_ImplVulkan_DestroyFontUploadObjects();
}

void Overlay::Begin(Window::Resolution drawable, float seconds, const OverlayPointer& pointer) {
    ImGuiIO& io = ImGui::GetIO();
    io.DisplaySize = ImVec2(drawable.width, drawable.height);
    io.DeltaTime = std::max(seconds, 1.0F / 1000.0F);
    constexpr float away = -std::numeric_limits<float>::max();
    io.MousePos = pointer.seen ? ImVec2(pointer.x, pointer.y) : ImVec2(away, away);
    io.MouseDown[ImGuiMouseButton_Left] = pointer.left;
    io.MouseDown[ImGuiMouseButton_Right] = pointer.right;
    io.MouseDown[ImGuiMouseButton_Middle] = pointer.middle;
    ImGui_ImplVulkan_NewFrame();
    ImGui::NewFrame();
}

void Overlay::End() {
    ImGui::Render();
    ended = true;
}

void Overlay::Record(VkCommandBuffer commands) {
    if (!ended)
        return;
    ImDrawData* data = ImGui::GetDrawData();
    if (data != nullptr && data->DisplaySize.x > 0 && data->DisplaySize.y > 0)
        ImGui_ImplVulkan_RenderDrawData(data, commands);
}

} // namespace InputLab
