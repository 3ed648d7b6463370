// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

/// The message log service.
namespace Common::Log {

/// The engine's message log. Each call records one finished text, which may hold line breaks.
/// Found through the instance storage; the host owns it. Called on the engine's main thread.
struct SMessageLog {
    virtual ~SMessageLog() = default;

    /// Records a failure.
    virtual void LogError(const std::string& text) = 0;

    /// Records something that went wrong but was recovered from. The window library never uses
    /// it; it stands here so that the three levels keep their places for every module.
    virtual void LogWarning(const std::string& text) = 0;

    /// Records information.
    virtual void LogInfo(const std::string& text) = 0;
};

} // namespace Common::Log
