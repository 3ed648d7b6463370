// SPDX-License-Identifier: Zlib
#pragma once

#include <common/ITicker.h>
#include <zenkbase/intrudable_pointer.h>

namespace Common {

/// Makes periodic tickers. Found through the instance storage; the host owns it.
struct SFrameUtility {
    virtual ~SFrameUtility() = default;

    /// A new ticker with the given period in microseconds; never empty. The caller owns the
    /// handle; the ticker stops when its last handle goes.
    virtual Zenk::IntrudablePointer<ITicker> MakeTicker(unsigned long long periodMicroseconds) = 0;
};

} // namespace Common
