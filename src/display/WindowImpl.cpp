// SPDX-License-Identifier: Zlib
#include "display/WindowImpl.h"

#include "display/ConfigurationKeys.h"
#include "platform/Platform.h"

#include <common/ApplicationErrorException.h>
#include <common/SConfigFile.h>
#include <common/SMessageLog.h>
#include <window/Configuration.h>
#include <zenkbase/singleton.h>

#include <SDL.h>
#include <SDL_vulkan.h>

#include <cstdint>

namespace Window {

namespace {

// Views of the services, built while the library loads; each use looks the instance up anew,
// and, borrowed, they leave the instance storage alone when the library unloads.
const Zenk::Singleton<Common::Log::SMessageLog, std::shared_ptr> messageLog(1);
const Zenk::Singleton<Common::Config::SConfigFile, std::shared_ptr> configFile(1);

Common::Log::SMessageLog& MessageLog() {
    return *messageLog.Instance();
}

Common::Config::SConfigFile& ConfigFile() {
    return *configFile.Instance();
}

/// Sizes travel as 16-bit fields; SDL's ints are cut to their low 16 bits.
Resolution Cut(int width, int height) {
    return {static_cast<unsigned short>(width), static_cast<unsigned short>(height)};
}

bool IsMinimised(SDL_Window* window) {
    return (SDL_GetWindowFlags(window) & SDL_WINDOW_MINIMIZED) != 0;
}

/// Runs one step of the destructor. A destructor must not throw, and a window that closes after
/// the host already took a service away (`Zenk::MissingInstance`) or whose service fails still
/// has to run its other steps, above all closing the SDL window; so the step is skipped in
/// silence: with the log possibly gone there is nowhere to report it.
template <class Step> void SkipOnFailure(Step&& step) noexcept {
    try {
        step();
    } catch (...) {
    }
}

} // namespace

WindowImpl::WindowImpl(const std::string& name, Resolution resolution, bool fullScreen)
    : name(name.empty() ? "Window" : name)
    , fullScreen(fullScreen) {
    MessageLog().LogInfo("Creating window: " + this->name);

    resolution = AdjustResolution(resolution);
    Uint32 flags = SDL_WINDOW_VULKAN;
    if (fullScreen)
        flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
    // Titled with the name as given (an empty one stays empty); created not resizable and made
    // resizable below, once the minimum size is set.
    window.reset(SDL_CreateWindow(name.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                                  resolution.width, resolution.height, flags),
                 SDL_DestroyWindow);
    if (!window)
        throw Common::ApplicationErrorException("Failed to create window: " + this->name +
                                                "\n->\t" + SDL_GetError());

    SDL_SetWindowResizable(window.get(), SDL_TRUE);
    SDL_SetWindowMinimumSize(window.get(), MinimumResolution.width, MinimumResolution.height);
    // The engine draws its own cursor; the system's comes back only with a full-screen switch.
    SDL_ShowCursor(SDL_DISABLE);
    SDL_CaptureMouse(SDL_FALSE);
}

WindowImpl::~WindowImpl() {
    SkipOnFailure([this] { MessageLog().LogInfo("Destroying window: " + name + "."); });

    // Measured before the SDL window goes, written after: the configuration is not touched
    // while SDL still holds the window.
    const Resolution saved = CurrentSize();
    window.reset();

    SkipOnFailure([&] {
        ConfigFile().WriteText(ResolutionKey.name, Configuration::ResolutionToText(saved));
    });
    SkipOnFailure([this] { ConfigFile().WriteText(FullScreenKey.name, fullScreen ? "1" : "0"); });
}

Resolution WindowImpl::AdjustResolution(Resolution requested) const {
    if (window && CurrentSize() == requested)
        return {0, 0};
    if (requested.width < MinimumResolution.width)
        requested.width = MinimumResolution.width;
    if (requested.height < MinimumResolution.height)
        requested.height = MinimumResolution.height;
    return requested;
}

Resolution WindowImpl::CurrentSize() const {
    if (IsMinimised(window.get()))
        return {0, 0};
    // Zero first: after a misuse (the factory gone before the window) SDL leaves them unset.
    int width = 0;
    int height = 0;
    SDL_GetWindowSize(window.get(), &width, &height);
    return Cut(width, height);
}

void WindowImpl::SetFullScreen(bool on) {
    if (fullScreen == on)
        return;
    // Stored before anything can fail: the request, not the outcome, is what is saved.
    fullScreen = on;
    MessageLog().LogInfo("Setting window " + name + " to full screen.");
    if (SDL_SetWindowFullscreen(window.get(), on ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0) != 0)
        MessageLog().LogError("Failed to set window " + name + " to full screen " + "\n->\t" +
                              SDL_GetError());
    SDL_ShowCursor(SDL_ENABLE);
}

void WindowImpl::SetResolution(const Resolution& resolution) {
    // The adjusted size only tells whether anything changes; SDL gets the request as it came,
    // and its own minimum (set at construction) keeps the window at 700 x 700 or more.
    if (AdjustResolution(resolution) == Resolution{0, 0})
        return;
    // The product is a 32-bit int; 65535 x 65535 does not fit and wraps instead of overflowing.
    const auto pixels = static_cast<std::int32_t>(static_cast<std::uint32_t>(resolution.width) *
                                                  static_cast<std::uint32_t>(resolution.height));
    MessageLog().LogInfo(
        "Setting resolutioon of window: " + name + " to " + std::to_string(resolution.width) + "x" +
        std::to_string(resolution.height) + " total pixels " + std::to_string(pixels) + ".");
    SDL_SetWindowSize(window.get(), resolution.width, resolution.height);
}

Resolution WindowImpl::GetResolution() {
    return CurrentSize();
}

Resolution WindowImpl::GetDrawableSize() {
    if (IsMinimised(window.get()))
        return {0, 0};
    int width = 0;
    int height = 0;
    SDL_Vulkan_GetDrawableSize(window.get(), &width, &height);
    return Cut(width, height);
}

float WindowImpl::GetAspectRatio() {
    // No special case for a minimised window: 0 / 0 gives NaN, which the renderer checks.
    const Resolution size = GetDrawableSize();
    return static_cast<float>(size.width) / static_cast<float>(size.height);
}

NativeHandle WindowImpl::GetNativeHandle() {
    return Platform::NativeHandleOf(window.get());
}

void WindowImpl::SetTitleSuffix(const std::string& suffix) {
    const std::string title = suffix.empty() ? name : name + " - " + suffix;
    SDL_SetWindowTitle(window.get(), title.c_str());
}

InstanceExtensions WindowImpl::GetInstanceExtensions() {
    unsigned int count = 0;
    if (SDL_Vulkan_GetInstanceExtensions(window.get(), &count, nullptr) != SDL_TRUE)
        throw Common::ApplicationErrorException(std::string("Failed to obtain extension count") +
                                                "\n\t" + SDL_GetError());

    InstanceExtensions extensions;
    extensions.count = count;
    if (count != 0)
        extensions.names.reset(new const char*[count]);
    // The record keeps the count of the first call, whatever the second one writes back.
    if (SDL_Vulkan_GetInstanceExtensions(window.get(), &count, extensions.names.get()) != SDL_TRUE)
        throw Common::ApplicationErrorException(std::string("Failed to obtain extensions names") +
                                                "\n\t" + SDL_GetError());
    return extensions;
}

} // namespace Window
