// SPDX-License-Identifier: Zlib
#include "display/ConfigurationKeys.h"

#include "display/ResolutionText.h"

// The keys are built while the library loads. Their two text defaults come from
// `ResolutionToText`, a function that uses no namespace-scope object of its own, so calling it
// from here is safe whatever order the loader initialises the library's files in. No code reads
// a key before an exported function runs, which is after every key is built.

namespace Window {

const ConfigurationKey<int> PollRateKey{"Window/Input/PollRate", 60};
const ConfigurationKey<std::string> ResolutionKey{"Window/Resolution",
                                                  ResolutionToText({1000, 1000})};
const ConfigurationKey<int> FullScreenKey{"Window/FullScreen", 0};
const ConfigurationKey<std::string> LookSensitivityKey{"Mouse/LookSensitivity",
                                                       ResolutionToText({2500, 2500})};
const ConfigurationKey<int> InvertedVerticalKey{"Mouse/InvertedVertical", 0};

} // namespace Window
