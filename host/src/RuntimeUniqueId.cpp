// SPDX-License-Identifier: Zlib
#include <host/RuntimeUniqueId.h>

#include <atomic>

namespace Host {

namespace {

// Relaxed is enough: ids must differ, not order anything else. At a billion ids a second the
// 63 bits last three centuries.
std::atomic<long long> lastId{0};

} // namespace

long long RuntimeUniqueId::NextId() {
    return lastId.fetch_add(1, std::memory_order_relaxed) + 1;
}

} // namespace Host
