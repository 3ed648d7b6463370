// SPDX-License-Identifier: Zlib
#include "display/ConfigurationKeys.h"

#include <window/Configuration.h>

// The keys are built while the library loads. Their two text defaults come from
// `ResolutionToText`, a function that uses no namespace-scope object of its own, so calling it
// from here is safe whatever order the loader initialises the library's files in. No code reads
// a key before an exported function runs, which is after every key is built.

namespace Window {

using namespace Configuration;

const ConfigurationKey<std::string> ResolutionKey{Configuration::ResolutionKey,
                                                  ResolutionToText(DefaultResolution)};
const ConfigurationKey<int> FullScreenKey{Configuration::FullScreenKey, DefaultFullScreen};
const ConfigurationKey<std::string> LookSensitivityKey{Configuration::LookSensitivityKey,
                                                       ResolutionToText(DefaultLookSensitivity)};
const ConfigurationKey<int> InvertedVerticalKey{Configuration::InvertedVerticalKey,
                                                DefaultInvertedVertical};

} // namespace Window
