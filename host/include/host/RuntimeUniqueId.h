// SPDX-License-Identifier: Zlib
#pragma once

#include <common/SRuntimeUniqueId.h>

namespace Host {

/// The runtime unique id service: 1, 2, 3, ... for the whole process.
///
/// The counter belongs to the process, not to the object, so a host that replaces its generator
/// (a second bootstrap, a test that builds several) never hands out an id twice. Ids are not
/// kept across runs.
class RuntimeUniqueId final : public Common::Unique::SRuntimeUniqueId {
public:
    /// The next id of the process; never 0, never negative, never repeated. Any thread.
    long long NextId() override;
};

} // namespace Host
