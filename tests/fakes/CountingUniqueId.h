// SPDX-License-Identifier: Zlib
#pragma once

#include <common/SRuntimeUniqueId.h>

namespace Fakes {

/// Ids counting up from `next`; a test may set `next` to make ids repeat or run backwards.
class CountingUniqueId : public Common::Unique::SRuntimeUniqueId {
public:
    long long NextId() override { return next++; }

    long long next = 1;
};

} // namespace Fakes
