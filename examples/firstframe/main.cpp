// SPDX-License-Identifier: Zlib
// The least an engine does to draw into the library's window and to hear its keys; the page
// "From nothing to a frame" (docs/first-frame.md) walks through it. A test gives it FRAMES.

#include <host/Bootstrap.h>
#include <window/VulkanSurface.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

//! [vulkan]
// What the renderer draws through. Made after the window, it goes before it: a surface must not
// outlive its window.
struct VulkanTarget {
    explicit VulkanTarget(Window::IWindow& window) {
        // The window names the extensions its surface needs; an engine appends its own.
        const Window::InstanceExtensions extensions = window.GetInstanceExtensions();
        VkInstanceCreateInfo info{};
        info.sType = VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO;
        info.enabledExtensionCount = extensions.count;
        info.ppEnabledExtensionNames = extensions.names.get();
        const VkResult result = vkCreateInstance(&info, nullptr, &instance);
        if (result != VK_SUCCESS)
            throw std::runtime_error("vkCreateInstance: " + Window::Vulkan::ResultName(result));
        try {
            surface = Window::Vulkan::CreateSurface(instance, window);
        } catch (...) {
            vkDestroyInstance(instance, nullptr); // no destructor runs for a failed constructor
            throw;
        }
    }
    ~VulkanTarget() {
        vkDestroySurfaceKHR(instance, surface, nullptr);
        vkDestroyInstance(instance, nullptr);
    }
    VulkanTarget(const VulkanTarget&) = delete;
    VulkanTarget& operator=(const VulkanTarget&) = delete;

    VkInstance instance = VK_NULL_HANDLE;
    VkSurfaceKHR surface = VK_NULL_HANDLE;
};
//! [vulkan]

//! [draw]
// The engine's renderer goes here: a swapchain on `surface` with the extent `size`, made again
// when the size changes, and a frame recorded and presented into it. This stand-in draws nothing;
// it only waits out a 60 Hz frame, as a present in FIFO mode waits for the display.
void DrawFrame([[maybe_unused]] VkSurfaceKHR surface, Window::Resolution size) {
    static auto nextFrame = std::chrono::steady_clock::now();
    if (size.width != 0 && size.height != 0) {
        // Record and present; a minimised window (0 x 0) gets no frame, but the loop goes on.
    }
    nextFrame += std::chrono::microseconds(16667);
    std::this_thread::sleep_until(nextFrame);
}
//! [draw]

// Runs `frames` frames, or until Escape or the window's close button when `frames` is 0.
void Run(unsigned long frames) {
    //! [host]
    // An engine keeps its configuration in the user's folder; this one, in the current folder.
    Host::Bootstrap host({"firstframe.toml"});
    //! [host]
    //! [window]
    auto window = host.WindowFactory().CreateWindow(); // its size comes from the configuration
    VulkanTarget vulkan(*window);
    //! [window]
    //! [reactors]
    bool running = true;
    auto& input = host.InputCollector();
    auto escape = input.CreateKeyReactor(Window::Key::Escape, 0);
    escape->SetPressCallback([&running](const std::set<Window::Mode>&) {
        running = false;
        return true; // consumed: reactors of a later priority do not hear it
    });
    auto close = input.CreateWindowReactor(Window::WindowEvent::Close);
    close->SetCallback([&running] { running = false; });
    //! [reactors]
    //! [loop]
    for (unsigned long frame = 0; running && (frames == 0 || frame < frames); ++frame) {
        input.QueryInputEvents(); // polls the window system; cursor tracers are called here
        host.Frames().Pump();     // the input ticks: keys, window events, buttons, text, holds
        DrawFrame(vulkan.surface, window->GetDrawableSize());
    }
    //! [loop]
    //! [end]
    // Leaving, even by an exception, ends all in reverse order: reactors, surface and instance,
    // the window (which writes its size back), and last the host, whose services that needs.
}
//! [end]

} // namespace

int main(int argc, char* argv[]) {
    char* end = nullptr;
    const unsigned long frames = argc > 1 ? std::strtoul(argv[1], &end, 10) : 0;
    if (argc > 2 || (argc > 1 && (*end != '\0' || frames == 0))) {
        std::cerr << "usage: first_frame [FRAMES]\n";
        return 2;
    }
    try {
        Run(frames);
    } catch (const std::exception& failure) {
        std::cerr << "first_frame: " << failure.what() << "\n";
        return 1;
    }
    return 0;
}
