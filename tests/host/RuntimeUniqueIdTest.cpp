#include <host/RuntimeUniqueId.h>

#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

namespace {

TEST(RuntimeUniqueIdTest, IdsArePositiveAndNeverRepeatAcrossInstances) {
    Host::RuntimeUniqueId first;
    const long long a = first.NextId();
    Host::RuntimeUniqueId replacement; // a host that made a new generator
    const long long b = replacement.NextId();
    const long long c = first.NextId();
    EXPECT_GT(a, 0);
    EXPECT_LT(a, b);
    EXPECT_LT(b, c);
}

TEST(RuntimeUniqueIdTest, ConcurrentCallersGetDistinctIds) {
    constexpr int threadCount = 4;
    constexpr int perThread = 20000;
    std::vector<std::vector<long long>> taken(threadCount);
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t)
        threads.emplace_back([&taken, t] {
            Host::RuntimeUniqueId ids;
            for (int i = 0; i < perThread; ++i)
                taken[t].push_back(ids.NextId());
        });
    for (auto& thread : threads)
        thread.join();
    std::set<long long> distinct;
    for (const auto& ids : taken)
        distinct.insert(ids.begin(), ids.end());
    EXPECT_EQ(distinct.size(), static_cast<std::size_t>(threadCount * perThread));
}

} // namespace
