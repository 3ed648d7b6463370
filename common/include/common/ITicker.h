// SPDX-License-Identifier: Zlib
#pragma once

#include <zenkbase/intrudable.h>

#include <functional>

namespace Common {

/// A periodic beat made by `SFrameUtility`. Dropping the last handle stops it.
struct ITicker : Zenk::Intrudable {
    /// Keeps `callback` and calls it once a period from then on, with the time of the tick in
    /// microseconds. Which thread calls it is the frame utility's contract.
    virtual void SetTickCallback(std::function<void(unsigned long long)> callback) = 0;
};

} // namespace Common
