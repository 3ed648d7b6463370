// SPDX-License-Identifier: Zlib
// A reactor that dies when no worker thread can be started still leaves every registry.

#include "CollectorFixture.h"
#include "ThreadLimit.h"

#include <system_error>

namespace Window {
namespace {

using RemovalWithoutThreads = CollectorFixture;

// While it lives, this process cannot start a thread.
class ThreadsForbidden {
public:
    ThreadsForbidden() : active(ThreadLimit::Forbid()) {}
    ~ThreadsForbidden() {
        if (active && !ThreadLimit::Allow())
            ADD_FAILURE() << "could not take back the right to start threads";
    }
    ThreadsForbidden(const ThreadsForbidden&) = delete;
    ThreadsForbidden& operator=(const ThreadsForbidden&) = delete;

    const bool active;
};

TEST_F(RemovalWithoutThreads, TheDyingReactorIsRemovedOnItsOwnThread) {
    auto key = collector->CreateKeyReactor(Key::A, 0);
    auto mode = collector->CreateModeReactor(Mode::LeftAlt);
    auto text = collector->CreateTextReactor();
    auto keep = collector->CreateKeyReactor(Key::A, 0);
    const ThreadsForbidden forbidden;
    if (!forbidden.active)
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
}

} // namespace
} // namespace Window
