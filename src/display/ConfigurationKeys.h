// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

namespace Window {

/// A configuration key: a path-like name and the value used when the file has none, as the
/// library's code reads them. All keys are constants built while the library loads, before any
/// exported function runs, from the contract in <window/Configuration.h>.
template <class Value> struct ConfigurationKey {
    std::string name;
    Value fallback;
};

/// "Window/Resolution", "{1000,1000}": the window size, read at creation, written at the end.
extern const ConfigurationKey<std::string> ResolutionKey;
/// "Window/FullScreen", 0: above 0 means full screen; written back as "1" or "0".
extern const ConfigurationKey<int> FullScreenKey;
/// "Mouse/LookSensitivity", "{2500,2500}": declared for the engine; this library ignores it.
extern const ConfigurationKey<std::string> LookSensitivityKey;
/// "Mouse/InvertedVertical", 0: declared for the engine; this library ignores it.
extern const ConfigurationKey<int> InvertedVerticalKey;

} // namespace Window
