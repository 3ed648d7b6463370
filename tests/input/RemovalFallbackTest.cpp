// A reactor that dies when no worker thread can be started still leaves every registry.
// The test forbids new threads to its own process: a non-root user over its process limit
// cannot start one, so root first becomes "nobody".

#include "CollectorFixture.h"

#include <sys/resource.h>
#include <system_error>
#include <unistd.h>

namespace Window {
namespace {

using RemovalWithoutThreads = CollectorFixture;

// Lowers only the soft limit, so that AllowNewThreads can raise it again: the leak checker
// needs a thread of its own when the process ends.
rlimit ForbidNewThreads(bool& forbidden) {
    rlimit before{};
    getrlimit(RLIMIT_NPROC, &before);
    forbidden = !(geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0));
    const rlimit none{0, before.rlim_max};
    forbidden = forbidden && setrlimit(RLIMIT_NPROC, &none) == 0;
    return before;
}

TEST_F(RemovalWithoutThreads, TheDyingReactorIsRemovedOnItsOwnThread) {
    auto key = collector->CreateKeyReactor(Key::A, 0);
    auto mode = collector->CreateModeReactor(Mode::LeftAlt);
    auto text = collector->CreateTextReactor();
    auto keep = collector->CreateKeyReactor(Key::A, 0);
    bool forbidden = false;
    const rlimit before = ForbidNewThreads(forbidden);
    if (!forbidden)
        GTEST_SKIP() << "this process may not limit its threads";
    EXPECT_THROW(collector->RemoveReactor(99), std::system_error)
        << "the public operation reports that its tasks could not start";

    key.Reset(); // the destructor lets nothing out
    mode.Reset();
    text.Reset();
    EXPECT_EQ(probe.keyReactors()[Key::A].size(), 1u);
    EXPECT_TRUE(probe.modeReactors().empty());
    EXPECT_TRUE(probe.textReactors().empty());
    keep.Reset();
    EXPECT_TRUE(probe.keyReactors().empty());
    setrlimit(RLIMIT_NPROC, &before);
}

} // namespace
} // namespace Window
