// SPDX-License-Identifier: Zlib
#pragma once

#include <common/SMessageLog.h>

#include <filesystem>
#include <memory>
#include <string>

namespace spdlog {
class logger;
}

namespace Host {

/// Where a `MessageLog` writes.
struct MessageLogSettings {
    /// Whether records go to the standard error stream (in colour on a terminal).
    bool console = true;
    /// A file that records are appended to; empty for none. Missing folders are created.
    std::filesystem::path file;
};

/// The message log service: one record per call, stamped with the time and the level
/// ("error", "warning", "info"), to the console and optionally a file.
///
/// A record is the caller's text exactly as given, after the stamp: the window library's texts
/// carry their own line breaks and tabs (a failure, then "\n->\t" and the system's reason), which
/// are kept so that the reason reads as an indented second line. Every record is flushed at once,
/// so the file is complete up to the last call even if the process dies next.
///
/// All operations may be called from any thread.
class MessageLog final : public Common::Log::SMessageLog {
public:
    /// Opens the sinks. Host start-up thread.
    /// Throws `std::runtime_error` (`Cannot open log file "<path>": <reason>`) when the file
    /// cannot be opened for appending.
    explicit MessageLog(const MessageLogSettings& settings);
    ~MessageLog() override;

    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    /// Records `text` at the level "error".
    void LogError(const std::string& text) override;

    /// Records `text` at the level "warning".
    void LogWarning(const std::string& text) override;

    /// Records `text` at the level "info".
    void LogInfo(const std::string& text) override;

private:
    std::shared_ptr<spdlog::logger> logger;
};

} // namespace Host
