// SPDX-License-Identifier: Zlib
// The frame utility on a clock that only the test moves.
#include <host/FrameUtility.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

using Ticks = std::vector<unsigned long long>;

/// A frame utility on a clock that only the test moves, so no case depends on real time.
class FrameUtilityTest : public ::testing::Test {
protected:
    unsigned long long now = 1000;
    Host::FrameUtility frames{[this] { return now; }};

    Zenk::IntrudablePointer<Common::ITicker> Recording(unsigned long long period, Ticks& into) {
        auto ticker = frames.MakeTicker(period);
        ticker->SetTickCallback([&into](unsigned long long at) { into.push_back(at); });
        return ticker;
    }
    void PumpAt(unsigned long long at) {
        now = at;
        frames.Pump();
    }
};

struct ScheduleRow {
    unsigned long long period;
    Ticks pumps, fired; // clock readings of the pumps, the ticker being made at 1000
};

class FrameUtilityScheduleTest : public FrameUtilityTest,
                                 public ::testing::WithParamInterface<ScheduleRow> {};

TEST_P(FrameUtilityScheduleTest, FiresWhenDueAtMostOncePerPumpAndDropsMissedPeriods) {
    Ticks fired;
    const auto ticker = Recording(GetParam().period, fired);
    for (const auto at : GetParam().pumps)
        PumpAt(at);
    EXPECT_EQ(fired, GetParam().fired);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FrameUtilityScheduleTest,
    ::testing::Values(ScheduleRow{100, {1000, 1099}, {}},
                      ScheduleRow{100, {1050, 1100, 1150, 1199, 1200}, {1100, 1200}},
                      // Slightly late pumps keep the beat: the grid, not the pump, sets the next.
                      ScheduleRow{100, {1130, 1210, 1300}, {1130, 1210, 1300}},
                      // A stall of many periods gives one tick, the next a whole period later.
                      ScheduleRow{100, {1950, 1960, 2049, 2050}, {1950, 2050}},
                      ScheduleRow{0, {1000, 1000, 1001}, {1000, 1000, 1001}},
                      ScheduleRow{~0ull, {1000, 5000}, {}})); // 1000 + period must not wrap

TEST(FrameUtilityPaceTest, ClockFollowsThePumpsAndNeedsAStep) {
    Host::FrameUtility frames(Host::FramePace{16667});
    Ticks fired;
    auto ticker = frames.MakeTicker(33333);
    ticker->SetTickCallback([&fired](unsigned long long at) { fired.push_back(at); });
    for (int pump = 0; pump < 4; ++pump)
        frames.Pump();
    EXPECT_EQ(fired, (Ticks{33334, 66668}));
    EXPECT_THROW(Host::FrameUtility(Host::FramePace{0}), std::invalid_argument);
}

TEST_F(FrameUtilityTest, DroppedTickerStopsEvenWhenDroppedInsideACallback) {
    Ticks fired;
    auto plain = Recording(10, fired);
    Zenk::IntrudablePointer<Common::ITicker> victim;
    auto self = frames.MakeTicker(10);
    self->SetTickCallback([&](unsigned long long) {
        victim.Reset(); // made later, so not yet called in this pump
        self.Reset();   // destroys the ticker and this function while the call runs
    });
    victim = Recording(10, fired);
    PumpAt(1010);
    plain.Reset();
    PumpAt(1020);
    EXPECT_EQ(fired, Ticks{1010});
    EXPECT_EQ(frames.TickerCount(), 0u);
    auto orphan = Host::FrameUtility().MakeTicker(1);
    orphan.Reset(); // must not touch its dead frame utility
}

TEST_F(FrameUtilityTest, TickerMadeInACallbackWaitsAndOneThatThrowsIsRescheduled) {
    Ticks fired;
    auto silent = frames.MakeTicker(0); // without a callback it is never called
    Zenk::IntrudablePointer<Common::ITicker> late;
    auto thrower = frames.MakeTicker(10);
    thrower->SetTickCallback([&](unsigned long long) {
        if (!late)
            late = Recording(5, fired);
        throw std::runtime_error("reactor failed");
    });
    EXPECT_THROW(PumpAt(1010), std::runtime_error);
    EXPECT_EQ(frames.TimeToNextTick(), 5u);
    PumpAt(1015); // the new ticker's first period; the thrower is next due at 1020
    EXPECT_EQ(fired, Ticks{1015});
    EXPECT_THROW(PumpAt(1020), std::runtime_error);
    PumpAt(1021); // the ticker after the thrower stayed due
    EXPECT_EQ(fired, (Ticks{1015, 1021}));
}

} // namespace
