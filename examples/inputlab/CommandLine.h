// SPDX-License-Identifier: Zlib
#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace InputLab {

/// What the command line asked for.
struct LabOptions {
    std::filesystem::path configPath;
    /// True when `--config` named the file: then it must exist. The default file may be missing
    /// (a first start) and is created when the window writes its state back.
    bool configNamed = false;
    std::optional<std::filesystem::path> logFile;
    /// Ends the run after this many frames of the loop; none runs until the window closes.
    std::optional<unsigned long long> frames;
    /// Where the last frame goes as a PNG file when the run ends.
    std::optional<std::filesystem::path> screenshot;
    /// Input to inject, one event per line.
    std::optional<std::filesystem::path> script;
    /// Where every input event of the run goes, as an input script that `script` replays.
    std::optional<std::filesystem::path> record;
    /// True when `--help` or `--version` was given: print `helpText` and do nothing else.
    bool help = false;
    std::string helpText;
};

/// The lab's exit codes, one per kind of failure; `--help` and README.md list them.
enum class ExitCode : int {
    Done = 0,
    /// The window system, Vulkan, the log or the screenshot failed while starting or running.
    Failed = 1,
    /// The command line was not understood.
    Misused = 2,
    /// The input script could not be read or was not understood.
    BadScript = 3,
    /// The configuration file is missing (when named), unreadable, corrupt or holds a bad value.
    BadConfiguration = 4,
};

/// A command line that cannot be obeyed; `what()` is the finished message.
class CommandLineError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where the configuration lives when `--config` is not given: $XDG_CONFIG_HOME/inputlab/, else
/// ~/.config/inputlab/, else the working directory. Either argument may be null or empty.
std::filesystem::path DefaultConfigPath(const char* xdgConfigHome, const char* home);

/// Where the configuration lives on Windows when `--config` is not given: inputlab\ in the roaming
/// application data folder (%APPDATA%), else the working directory. The argument may be null or
/// empty.
std::filesystem::path DefaultConfigPath(const wchar_t* appData);

/// Reads the options; the environment decides only the default configuration path.
/// Throws `CommandLineError` for an unknown option, a missing or malformed value (`--frames`
/// beyond 18446744073709551615 included), or a positional argument.
LabOptions ParseCommandLine(int argc, const char* const argv[]);

} // namespace InputLab
