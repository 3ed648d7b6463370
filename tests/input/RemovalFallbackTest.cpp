// A reactor that dies when no worker thread can be started still leaves every registry.
// The test forbids new threads to its own process: a user over its process limit cannot start
// one, and root is only held to the limit while it acts as another user.

#include "CollectorFixture.h"

#include <sys/resource.h>
#include <system_error>
#include <unistd.h>

namespace Window {
namespace {

using RemovalWithoutThreads = CollectorFixture;

// While it lives, this process cannot start a thread. Root acts as "nobody" and keeps root as
// its saved id, so that it can come back: the leak checker needs a thread of its own and the
// right to read its suppressions when the process ends.
class ThreadsForbidden {
public:
    ThreadsForbidden() {
        getrlimit(RLIMIT_NPROC, &before);
        wasRoot = geteuid() == 0;
        if (wasRoot && setresuid(65534, 65534, 0) != 0)
            return;
        const rlimit none{0, before.rlim_max};
        active = setrlimit(RLIMIT_NPROC, &none) == 0;
    }
    ~ThreadsForbidden() {
        setrlimit(RLIMIT_NPROC, &before);
        if (wasRoot && setresuid(0, 0, 0) != 0)
            ADD_FAILURE() << "could not act as root again";
    }
    ThreadsForbidden(const ThreadsForbidden&) = delete;
    ThreadsForbidden& operator=(const ThreadsForbidden&) = delete;

    bool active = false;

private:
    rlimit before{};
    bool wasRoot = false;
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
