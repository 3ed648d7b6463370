// SPDX-License-Identifier: Zlib
// The one-call surface on the library's real window: the surface presents, and every way it can
// fail is named in its message.
#include "FakeConfigFile.h"
#include "RecordingMessageLog.h"
#include "ScopedInstance.h"

#include <window/Manufacture.h>
#include <window/SWindowFactory.h>
#include <window/VulkanSurface.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Window::Vulkan::SurfaceError;

/// An instance with the extensions that `window` lists, or with VK_KHR_surface alone.
VkInstance MakeInstance(Window::IWindow& window, bool platformExtension = true) {
    const Window::InstanceExtensions extensions = window.GetInstanceExtensions();
    const char* const surfaceOnly[] = {VK_KHR_SURFACE_EXTENSION_NAME};
    VkInstanceCreateInfo info{};
    info.sType = VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO;
    info.enabledExtensionCount = platformExtension ? extensions.count : 1;
    info.ppEnabledExtensionNames = platformExtension ? extensions.names.get() : surfaceOnly;
    VkInstance instance = VK_NULL_HANDLE;
    EXPECT_EQ(vkCreateInstance(&info, nullptr, &instance), VK_SUCCESS);
    return instance;
}

/// What the surface reports as its size: the window's drawable, except on Wayland, where a
/// surface has no size until a swapchain gives it one (the special value 0xFFFFFFFF).
VkExtent2D ExpectedExtent(Window::IWindow& window) {
#if !defined(_WIN32)
    if (window.GetNativeHandle().system == Window::WindowSystem::Wayland)
        return {0xFFFFFFFFU, 0xFFFFFFFFU};
#endif
    return {window.GetDrawableSize().width, window.GetDrawableSize().height};
}

/// A window that the window system could not describe: its handle is empty.
struct UndescribedWindow : Window::IWindow {
    void SetFullScreen(bool) override {}
    void SetResolution(const Window::Resolution&) override {}
    Window::Resolution GetResolution() override { return {}; }
    Window::Resolution GetDrawableSize() override { return {}; }
    float GetAspectRatio() override { return 0; }
    Window::NativeHandle GetNativeHandle() override { return {}; }
    void SetTitleSuffix(const std::string&) override {}
    Window::InstanceExtensions GetInstanceExtensions() override { return {}; }
};

class VulkanSurfaceTest : public ::testing::Test {
protected:
    void SetUp() override {
        factory.reset(Window::ManufactureWindowFactory());
        window = factory->CreateWindow();
    }

    /// The `SurfaceError` that `call` throws, with its message; fails the test when none.
    template <class Call> static SurfaceError FailureOf(Call&& call) {
        try {
            call();
        } catch (const SurfaceError& error) {
            return error;
        }
        ADD_FAILURE() << "no SurfaceError";
        return SurfaceError("", VK_SUCCESS);
    }

    Fakes::FakeConfigFile config;
    Fakes::RecordingMessageLog log;
    Fakes::ScopedInstance<Common::Config::SConfigFile> configEntry{config};
    Fakes::ScopedInstance<Common::Log::SMessageLog> logEntry{log};
    std::unique_ptr<Window::SWindowFactory> factory;
    Zenk::IntrudablePointer<Window::IWindow> window;
};

// A device presents to the surface, and the surface is the window's: its size is the drawable's.
TEST_F(VulkanSurfaceTest, SurfaceOfTheWindowPresentsAtItsSize) {
    VkInstance instance = MakeInstance(*window);
    const VkSurfaceKHR surface = Window::Vulkan::CreateSurface(instance, *window);
    ASSERT_NE(surface, VK_NULL_HANDLE);

    std::uint32_t count = 1;
    VkPhysicalDevice device = VK_NULL_HANDLE;
    ASSERT_GE(vkEnumeratePhysicalDevices(instance, &count, &device), VK_SUCCESS);
    ASSERT_EQ(count, 1U);
    VkBool32 presents = VK_FALSE;
    EXPECT_EQ(vkGetPhysicalDeviceSurfaceSupportKHR(device, 0, surface, &presents), VK_SUCCESS);
    EXPECT_EQ(presents, VK_TRUE);
    VkSurfaceCapabilitiesKHR capabilities{};
    EXPECT_EQ(vkGetPhysicalDeviceSurfaceCapabilitiesKHR(device, surface, &capabilities),
              VK_SUCCESS);
    const VkExtent2D expected = ExpectedExtent(*window);
    EXPECT_EQ(capabilities.currentExtent.width, expected.width);
    EXPECT_EQ(capabilities.currentExtent.height, expected.height);

    vkDestroySurfaceKHR(instance, surface, nullptr);
    vkDestroyInstance(instance, nullptr);
}

// Each failure names what to fix; the window system and the window come first when known.
TEST_F(VulkanSurfaceTest, FailuresNameTheWindowSystemAndTheCause) {
    const SurfaceError noInstance =
        FailureOf([&] { Window::Vulkan::CreateSurface(VK_NULL_HANDLE, *window); });
    EXPECT_STREQ(noInstance.what(), "Failed to create a Vulkan surface for a window: there is no "
                                    "Vulkan instance (VK_NULL_HANDLE)");
    EXPECT_EQ(noInstance.Result(), VK_ERROR_INITIALIZATION_FAILED);

    VkInstance instance = MakeInstance(*window, false);
    const SurfaceError noExtension =
        FailureOf([&] { Window::Vulkan::CreateSurface(instance, *window); });
#if defined(_WIN32)
    EXPECT_THAT(noExtension.what(), StartsWith("Failed to create a Vulkan surface for Win32 "
                                               "window 0x"));
    EXPECT_THAT(noExtension.what(), HasSubstr(": the instance was created without "
                                              "VK_KHR_win32_surface (enable every extension "
                                              "that IWindow::GetInstanceExtensions lists)"));
#else
    const bool wayland = window->GetNativeHandle().system == Window::WindowSystem::Wayland;
    EXPECT_THAT(noExtension.what(),
                StartsWith(wayland ? "Failed to create a Vulkan surface for Wayland surface 0x"
                                   : "Failed to create a Vulkan surface for X11 window 0x"));
    EXPECT_THAT(noExtension.what(),
                HasSubstr(wayland ? ": the instance was created without VK_KHR_wayland_surface"
                                  : ": the instance was created without VK_KHR_xlib_surface"));
#endif
    EXPECT_EQ(noExtension.Result(), VK_ERROR_EXTENSION_NOT_PRESENT);

    UndescribedWindow undescribed;
    const SurfaceError noWindow =
        FailureOf([&] { Window::Vulkan::CreateSurface(instance, undescribed); });
    EXPECT_EQ(noWindow.Result(), VK_ERROR_INITIALIZATION_FAILED);
#if defined(_WIN32)
    EXPECT_STREQ(noWindow.what(), "Failed to create a Vulkan surface for a window: Windows gave "
                                  "no window handle (HWND) for it");
#else
    EXPECT_STREQ(noWindow.what(), "Failed to create a Vulkan surface for a window: its window "
                                  "system did not describe it (SDL's video driver has no native "
                                  "windows)");
#endif
    vkDestroyInstance(instance, nullptr);
}

TEST(VulkanResultName, NamesKnownResultsAndNumbersOthers) {
    EXPECT_EQ(Window::Vulkan::ResultName(VK_ERROR_SURFACE_LOST_KHR), "VK_ERROR_SURFACE_LOST_KHR");
    EXPECT_EQ(Window::Vulkan::ResultName(static_cast<VkResult>(-12345)), "VkResult -12345");
}

} // namespace
