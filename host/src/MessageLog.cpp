// SPDX-License-Identifier: Zlib
#include <host/MessageLog.h>

#include <spdlog/logger.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>

#include <stdexcept>
#include <system_error>
#include <vector>

namespace Host {

namespace {

// Milliseconds and the level name are what a person reading a session's log needs to order the
// window's lines against the engine's; the logger's name would only repeat itself.
constexpr const char* RecordPattern = "[%Y-%m-%d %H:%M:%S.%e] [%l] %v";

std::shared_ptr<spdlog::sinks::sink> OpenFile(const std::filesystem::path& file) {
    const auto fail = [&file](const std::string& reason) {
        return std::runtime_error("Cannot open log file \"" + file.string() + "\": " + reason);
    };
    std::error_code error;
    if (file.has_parent_path()) {
        std::filesystem::create_directories(file.parent_path(), error);
        if (error)
            throw fail(error.message());
    }
    try {
        // Appended, not truncated: the previous session's lines are what one reads after a crash.
        return std::make_shared<spdlog::sinks::basic_file_sink_mt>(file.string(), false);
    } catch (const spdlog::spdlog_ex& failure) {
        throw fail(failure.what());
    }
}

} // namespace

MessageLog::MessageLog(const MessageLogSettings& settings) {
    std::vector<spdlog::sink_ptr> sinks;
    if (settings.console)
        sinks.push_back(std::make_shared<spdlog::sinks::stderr_color_sink_mt>());
    if (!settings.file.empty())
        sinks.push_back(OpenFile(settings.file));

    // Not put into spdlog's registry: two logs in one process (a test, a restarted host) must
    // not collide by name.
    logger = std::make_shared<spdlog::logger>("host", sinks.begin(), sinks.end());
    logger->set_pattern(RecordPattern);
    logger->set_level(spdlog::level::trace);
    logger->flush_on(spdlog::level::trace);
}

MessageLog::~MessageLog() = default;

void MessageLog::LogError(const std::string& text) {
    logger->error(text);
}

void MessageLog::LogWarning(const std::string& text) {
    logger->warn(text);
}

void MessageLog::LogInfo(const std::string& text) {
    logger->info(text);
}

} // namespace Host
