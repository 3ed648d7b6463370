#include <host/FrameUtility.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Ticks = std::vector<unsigned long long>;

/// A frame utility on a clock that only the test moves, so no case depends on real time.
class FrameUtilityTest : public ::testing::Test {
protected:
    Host::FrameUtility frames{[this] { return now; }};
    unsigned long long now = 1000;

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
    const char* name;
    unsigned long long period;
    Ticks pumps; // clock readings, the ticker being made at 1000
    Ticks fired;

    friend void PrintTo(const ScheduleRow& row, std::ostream* out) { *out << row.name; }
};

class FrameUtilityScheduleTest : public FrameUtilityTest,
                                 public ::testing::WithParamInterface<ScheduleRow> {};

TEST_P(FrameUtilityScheduleTest, FiresAtMostOncePerPumpAndDropsMissedPeriods) {
    Ticks fired;
    const auto ticker = Recording(GetParam().period, fired);
    for (const auto at : GetParam().pumps)
        PumpAt(at);
    EXPECT_EQ(fired, GetParam().fired);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FrameUtilityScheduleTest,
    ::testing::Values(
        ScheduleRow{"NotBeforeThePeriod", 100, {1000, 1099}, {}},
        ScheduleRow{"ExactlyOnTime", 100, {1100, 1200, 1300}, {1100, 1200, 1300}},
        // Pumping faster than the period: the extra pumps call nothing.
        ScheduleRow{"FastPumps", 100, {1050, 1100, 1150, 1199, 1200}, {1100, 1200}},
        // Slightly late pumps keep the beat: the next tick is due on the grid, not after the pump.
        ScheduleRow{"SlightlyLate", 100, {1130, 1210, 1300}, {1130, 1210, 1300}},
        // A stall of many periods gives one tick, and the next is a whole period later.
        ScheduleRow{"LongStall", 100, {1950, 1960, 2049, 2050}, {1950, 2050}},
        ScheduleRow{"ZeroPeriodEveryPump", 0, {1000, 1000, 1001}, {1000, 1000, 1001}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FrameUtilityTest, TickersFireInCreationOrderAndOnlyWithACallback) {
    std::vector<std::string> order;
    auto silent = frames.MakeTicker(10);
    auto first = frames.MakeTicker(10);
    auto second = frames.MakeTicker(10);
    second->SetTickCallback([&](unsigned long long) { order.push_back("second"); });
    first->SetTickCallback([&](unsigned long long) { order.push_back("first"); });
    PumpAt(1010);
    EXPECT_EQ(order, (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(frames.TickerCount(), 3u);
}

TEST_F(FrameUtilityTest, DroppingTheLastHandleStopsTheTicker) {
    Ticks fired;
    auto ticker = Recording(10, fired);
    PumpAt(1010);
    ticker.Reset();
    EXPECT_EQ(frames.TickerCount(), 0u);
    PumpAt(1020);
    EXPECT_EQ(fired, Ticks{1010});
}

TEST_F(FrameUtilityTest, TickerDroppedByAnEarlierCallbackIsNotCalled) {
    Ticks fired;
    Zenk::IntrudablePointer<Common::ITicker> victim;
    auto killer = frames.MakeTicker(10);
    killer->SetTickCallback([&](unsigned long long) { victim.Reset(); });
    victim = Recording(10, fired);
    PumpAt(1010);
    EXPECT_TRUE(fired.empty());
}

TEST_F(FrameUtilityTest, TickerMayDropOrReplaceItselfInsideItsCallback) {
    int calls = 0;
    auto self = frames.MakeTicker(10);
    auto replaced = frames.MakeTicker(10);
    self->SetTickCallback([&](unsigned long long) {
        ++calls;
        self.Reset(); // destroys the ticker and its function while the call runs
    });
    replaced->SetTickCallback([&](unsigned long long) {
        ++calls;
        replaced->SetTickCallback([&](unsigned long long) { calls += 100; });
    });
    PumpAt(1010);
    PumpAt(1020);
    EXPECT_EQ(calls, 102);
    EXPECT_EQ(frames.TickerCount(), 1u);
}

TEST_F(FrameUtilityTest, TickerMadeDuringAPumpWaitsForItsFirstPeriod) {
    Ticks fired;
    Zenk::IntrudablePointer<Common::ITicker> late;
    auto maker = frames.MakeTicker(10);
    maker->SetTickCallback([&](unsigned long long) {
        if (!late)
            late = Recording(5, fired);
    });
    PumpAt(1010);
    EXPECT_TRUE(fired.empty());
    PumpAt(1015);
    EXPECT_EQ(fired, Ticks{1015});
}

TEST_F(FrameUtilityTest, ThrowingCallbackEndsThePumpAndTheRestStayDue) {
    Ticks fired;
    bool fail = true;
    auto thrower = frames.MakeTicker(10);
    thrower->SetTickCallback([&](unsigned long long) {
        if (fail)
            throw std::runtime_error("reactor failed");
    });
    auto other = Recording(10, fired);
    now = 1010;
    EXPECT_THROW(frames.Pump(), std::runtime_error);
    EXPECT_TRUE(fired.empty());
    fail = false;
    PumpAt(1011);
    EXPECT_EQ(fired, Ticks{1011});
}

TEST_F(FrameUtilityTest, PumpInsideATickIsRefused) {
    std::string message;
    auto ticker = frames.MakeTicker(10);
    ticker->SetTickCallback([&](unsigned long long) {
        try {
            frames.Pump();
        } catch (const std::logic_error& failure) {
            message = failure.what();
        }
    });
    PumpAt(1010);
    EXPECT_EQ(message, "FrameUtility::Pump called from a tick callback");
    PumpAt(1020); // the mark was cleared: pumping goes on
    EXPECT_EQ(message, "FrameUtility::Pump called from a tick callback");
}

TEST_F(FrameUtilityTest, TimeToNextTickCountsOnlyTickersWithCallbacks) {
    auto idle = frames.MakeTicker(5);
    EXPECT_EQ(frames.TimeToNextTick(), std::nullopt);
    Ticks fired;
    auto ticker = Recording(40, fired);
    EXPECT_EQ(frames.TimeToNextTick(), 40u);
    now = 1030;
    EXPECT_EQ(frames.TimeToNextTick(), 10u);
    now = 1100;
    EXPECT_EQ(frames.TimeToNextTick(), 0u);
}

TEST(FrameUtilityLifetimeTest, TickerMayOutliveItsFrameUtility) {
    Zenk::IntrudablePointer<Common::ITicker> survivor;
    {
        Host::FrameUtility frames;
        survivor = frames.MakeTicker(1);
        survivor->SetTickCallback([](unsigned long long) {});
    }
    survivor->SetTickCallback([](unsigned long long) {});
    survivor.Reset(); // must not touch the dead frame utility
}

} // namespace
