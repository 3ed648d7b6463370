// SPDX-License-Identifier: Zlib
#pragma once

#include <filesystem>
#include <stdexcept>

namespace InputLab {

/// The configuration values that the lab and the library read, checked before the window opens.
struct LabSettings {
    /// "Window/FullScreen" above 0: the window opens in full screen.
    bool fullScreen = false;
    /// The input ticker's period in microseconds, from "Window/Input/PollRate" as the library
    /// derives it.
    unsigned long long tickPeriod = 16666;
};

/// A configuration file that cannot be used; `what()` names the file and, for a bad value, the
/// key and the value.
class ConfigurationError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the configuration file at `path` as the library will and checks every value that the
/// window and the input collector take from it, so that a bad file costs no window and no
/// write. A missing file gives the defaults unless `named` (the user named it, so it must exist).
/// Engine main thread, before the host starts.
/// Throws `ConfigurationError`: "Configuration file "<path>" does not exist", what the host's
/// configuration file throws for an unreadable or corrupt file or a value that is not an
/// integer where one is expected, or "Configuration key "Window/Resolution" in "<path>" holds
/// "<text>", which is not a size such as "{1000,1000}" (two whole numbers from 0 to 65535)".
LabSettings LoadConfiguration(const std::filesystem::path& path, bool named);

} // namespace InputLab
