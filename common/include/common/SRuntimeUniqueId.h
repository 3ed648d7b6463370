// SPDX-License-Identifier: Zlib
#pragma once

/// The runtime unique id service.
namespace Common::Unique {

/// Hands out ids that are unique within one run of the process.
/// Found through the instance storage; the host owns it.
struct SRuntimeUniqueId {
    virtual ~SRuntimeUniqueId() = default;

    /// A value that no earlier call in this process returned.
    virtual long long NextId() = 0;
};

} // namespace Common::Unique
