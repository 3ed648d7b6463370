// SPDX-License-Identifier: Zlib
#include "display/WindowFactoryImpl.h"

#include "display/ConfigurationKeys.h"
#include "display/WindowImpl.h"

#include <common/ApplicationErrorException.h>
#include <common/SConfigFile.h>
#include <window/Configuration.h>
#include <window/Manufacture.h>
#include <zenkbase/singleton.h>

#include <SDL.h>

#include <cstdint>
#include <memory>

namespace Window {

namespace {

/// How often `ManufactureWindowFactory` was called in this process. Never lowered: neither a
/// failed start nor the factory's deletion makes room for another factory, because SDL and the
/// instance storage are not meant to be brought up twice. Constant-initialised, so it is 0
/// before any code of the library runs.
std::int32_t factoryCount = 0;

/// The view through which the configuration file is looked up anew at each use. Built while the
/// library loads; borrowed, so closing it at unload leaves the instance storage alone.
const Zenk::Singleton<Common::Config::SConfigFile, std::shared_ptr> configFile(1);

/// The name of every window; it is also the base of the title.
const char* const windowName = "Tavrino. Version: 905";

/// The size as one number, height first, so that height decides a comparison before width.
std::uint32_t Packed(const Resolution& resolution) {
    return (static_cast<std::uint32_t>(resolution.height) << 16U) + resolution.width;
}

} // namespace

WindowFactoryImpl::WindowFactoryImpl() {
    if (SDL_Init(SDL_INIT_VIDEO) != 0)
        throw Common::ApplicationErrorException(std::string("Failed to initialize SDL: ") +
                                                SDL_GetError() + ".");
}

WindowFactoryImpl::~WindowFactoryImpl() {
    SDL_Quit();
}

Zenk::IntrudablePointer<IWindow> WindowFactoryImpl::CreateWindow() {
    const std::string text =
        configFile.Instance()->ReadText(ResolutionKey.name, ResolutionKey.fallback);
    std::optional<Resolution> resolution = Configuration::ResolutionFromText(text);
    if (!resolution)
        throw Common::ApplicationErrorException(
            "Failed to read configuration key: " + ResolutionKey.name + ".");

    const bool fullScreen =
        configFile.Instance()->ReadInteger(FullScreenKey.name, FullScreenKey.fallback) > 0;

    // One comparison of the packed sizes, not a clamp of each field: a low window is raised to
    // the whole minimum ({900,600} becomes 700 x 700), while a narrow but tall one keeps its
    // width here and is clamped per field by the window itself ({600,900} becomes 700 x 900).
    if (Packed(*resolution) < Packed(MinimumResolution))
        resolution = MinimumResolution;

    auto window = std::make_unique<WindowImpl>(windowName, *resolution, fullScreen);
    return Zenk::IntrudablePointer<IWindow>(window.release());
}

SWindowFactory* ManufactureWindowFactory() {
    // Counted before anything can fail, so that a failed start also uses up the one chance.
    ++factoryCount;
    if (factoryCount > 1)
        throw Common::ApplicationErrorException("Multiple instances of SWindowFactory");
    return new WindowFactoryImpl();
}

} // namespace Window
