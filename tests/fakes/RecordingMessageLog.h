// SPDX-License-Identifier: Zlib
#pragma once

#include <common/SMessageLog.h>

#include <string>
#include <vector>

namespace Fakes {

/// A message log that keeps every line, each with its level, in the order of the calls.
class RecordingMessageLog : public Common::Log::SMessageLog {
public:
    enum class Level { Error, Warning, Info };
    struct Line {
        Level level;
        std::string text;
        bool operator==(const Line& other) const {
            return level == other.level && text == other.text;
        }
    };

    void LogError(const std::string& text) override { lines.push_back({Level::Error, text}); }
    void LogWarning(const std::string& text) override { lines.push_back({Level::Warning, text}); }
    void LogInfo(const std::string& text) override { lines.push_back({Level::Info, text}); }

    std::vector<Line> lines;
};

} // namespace Fakes
