// SPDX-License-Identifier: Zlib
#pragma once

#include "CountingUniqueId.h"
#include "FakeConfigFile.h"
#include "ManualFrameUtility.h"
#include "ScopedInstance.h"

namespace Fakes {

/// The services the input collector looks up, as fakes, registered for the life of the object.
struct InputServices {
    FakeConfigFile config;
    ManualFrameUtility frames;
    CountingUniqueId ids;
    ScopedInstance<Common::Config::SConfigFile> configRegistration{config};
    ScopedInstance<Common::SFrameUtility> framesRegistration{frames};
    ScopedInstance<Common::Unique::SRuntimeUniqueId> idsRegistration{ids};
};

} // namespace Fakes
