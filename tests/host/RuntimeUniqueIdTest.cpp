// SPDX-License-Identifier: Zlib
// The unique id service.
#include <host/RuntimeUniqueId.h>

#include <gtest/gtest.h>

namespace {

TEST(RuntimeUniqueIdTest, IdsIncreaseAcrossInstances) {
    Host::RuntimeUniqueId first, second; // as when a host makes a new generator
    const long long a = first.NextId(), b = second.NextId(), c = first.NextId();
    EXPECT_TRUE(0 < a && a < b && b < c) << a << " " << b << " " << c;
}

} // namespace
