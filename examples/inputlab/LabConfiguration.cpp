// SPDX-License-Identifier: Zlib
#include "LabConfiguration.h"

#include <host/ConfigFile.h>
#include <host/PrintableText.h>
#include <window/Configuration.h>

namespace InputLab {

namespace {

using namespace Window::Configuration;

std::string Named(const std::filesystem::path& path) {
    return '"' + Host::Printable(path.string()) + '"';
}

} // namespace

LabSettings LoadConfiguration(const std::filesystem::path& path, bool named) {
    std::error_code error;
    if (named && !std::filesystem::exists(path, error) && !error)
        throw ConfigurationError("Configuration file " + Named(path) + " does not exist");
    try {
        Host::ConfigFile config(path);
        LabSettings settings;
        // Read by the library's own rules, so that the lab refuses exactly what the library
        // would, before any window opens.
        const std::string defaultResolution = ResolutionToText(DefaultResolution);
        const std::string resolution = config.ReadText(ResolutionKey, defaultResolution);
        if (!ResolutionFromText(resolution))
            throw ConfigurationError(std::string("Configuration key \"") + ResolutionKey +
                                     "\" in " + Named(path) + " holds " + Host::Quoted(resolution) +
                                     ", which is not a size such as \"" + defaultResolution +
                                     "\" (two whole numbers from 0 to 65535)");
        settings.fullScreen = config.ReadInteger(FullScreenKey, DefaultFullScreen) > 0;
        settings.tickPeriod = TickPeriod(config.ReadInteger(PollRateKey, DefaultPollRate));
        return settings;
    } catch (const ConfigurationError&) {
        throw;
    } catch (const std::exception& failure) {
        // The host's messages already name the file and the key.
        throw ConfigurationError(failure.what());
    }
}

} // namespace InputLab
