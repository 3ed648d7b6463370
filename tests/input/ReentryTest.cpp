// SPDX-License-Identifier: Zlib
// Callbacks that create and drop reactors, themselves included, while walks run over the same
// registries. Run under AddressSanitizer, any use of a dead iterator, vector or function fails
// the run. The seeded streams go through the input_events fuzzer's own driver (EventStream);
// the named cases below each set one way of re-entering up by hand and check what it leaves.

#include "CollectorFixture.h"
#include "EventStream.h"

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <fuzzer/FuzzedDataProvider.h>
#include <random>
#include <string>
#include <vector>

namespace Window {
namespace {

class Reentry : public CollectorFixture {
protected:
    // Polls from inside a callback so that an event pushed there is dispatched there. SDL ends
    // each round of polling at a marker that it queued when the round began, behind the events
    // then waiting; an event pushed during the round lies behind the marker, so the first call
    // ends at the marker and the second one reaches the event.
    void PollTwice() {
        collector->QueryInputEvents();
        collector->QueryInputEvents();
    }

    Zenk::IntrudablePointer<IKeyReactor> kept;
};

unsigned int SeedFromEnvironment() {
    const char* text = std::getenv("WINDOW_STRESS_SEED");
    return text != nullptr ? static_cast<unsigned int>(std::strtoul(text, nullptr, 10)) : 20261123u;
}

// Streams of seeded random bytes, each read by the fuzzer's driver as it reads a fuzzer's input,
// one after another over the same collector. Random bytes make and drop reactors at about the
// same rate, so few are registered at a time: a stream of 16 KiB runs about 2000 steps and about
// 100 callbacks, a few of which meet an emptied callback; 24 streams give some 2400 callbacks, in
// about 2 s optimised and 13 s under the sanitizers. The fuzzer, guided by coverage, goes deeper;
// these streams keep every build and sanitizer on the same paths.
TEST_F(Reentry, RandomStreamsWhileCallbacksCreateAndDropReactors) {
    constexpr int streams = 24;
    constexpr std::size_t streamBytes = 16384;
    const unsigned int seed = SeedFromEnvironment();
    SCOPED_TRACE("WINDOW_STRESS_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    std::vector<std::uint8_t> bytes(streamBytes);
    long calls = 0, emptyCalls = 0;
    for (int stream = 0; stream < streams; ++stream) {
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        FuzzedDataProvider provider(bytes.data(), bytes.size());
        EventStream events(provider, *collector, frames);
        // A broken promise throws, with what was seen; the registries are checked at the end.
        ASSERT_NO_THROW(events.Run()) << "stream " << stream;
        calls += events.Calls();
        emptyCalls += events.EmptyCalls();
    }
    // The streams must reach reactors, and walks must meet emptied callbacks, or they prove
    // nothing about re-entry.
    EXPECT_GT(calls, 40 * streams) << "the streams reached too few reactors";
    EXPECT_GT(emptyCalls, 0) << "no walk met an emptied callback";
    RecordProperty("calls", static_cast<int>(calls));
    RecordProperty("emptyCalls", static_cast<int>(emptyCalls));
}

// A callback that empties its own field has it so, and a tracer that polls again from its
// callback is reached by the nested dispatch too.
TEST_F(Reentry, SelfStoresAndNestedPollingReachTheRunningCallback) {
    auto key = collector->CreateKeyReactor(Key::A, 0);
    key->SetPressCallback([&](auto) { return key->SetPressCallback(nullptr), false; });
    Press(SDLK_a);
    Release(SDLK_a);
    Deliver();
    Press(SDLK_a);
    collector->QueryInputEvents();
    EXPECT_THROW(frames.Tick(), std::bad_function_call);

    std::vector<short> seen;
    auto tracer = collector->CreateCursorTracer(0);
    tracer->SetCallback([&](auto position, auto) {
        seen.push_back(position.x);
        if (seen.size() == 1) {
            PushMotion(2, 0);
            PollTwice();
        }
        return false;
    });
    PushMotion(1, 0);
    collector->QueryInputEvents();
    EXPECT_EQ(seen, (std::vector<short>{1, 2}));
}

// A tracer's callback polls again, and the nested dispatch calls the same callback while the
// outer call still runs. What the inner call does to the tracer must hold once both returned.
enum class Inner { Replaces, Empties, Clears, Drops };

class NestedCall : public Reentry, public ::testing::WithParamInterface<Inner> {};

TEST_P(NestedCall, WhatTheInnerCallDoesToItsTracerHoldsAfterBothReturn) {
    std::vector<short> seen;
    auto tracer = collector->CreateCursorTracer(0);
    const std::string replacement = "a function with a heap capture, so that a leak would show";
    tracer->SetCallback([&](auto position, auto) {
        seen.push_back(position.x);
        if (position.x == 1) {
            PushMotion(2, 0);
            PollTwice();
        } else if (GetParam() == Inner::Replaces) {
            tracer->SetCallback([&, replacement](auto, auto) { return seen.push_back(-1), false; });
        } else if (GetParam() == Inner::Empties) {
            tracer->SetCallback(nullptr);
        } else if (GetParam() == Inner::Clears) {
            tracer->ClearAllCallbacks();
        } else {
            tracer.Reset();
        }
        return false;
    });
    PushMotion(1, 0);
    collector->QueryInputEvents();
    EXPECT_EQ(seen, (std::vector<short>{1, 2}));

    PushMotion(3, 0);
    if (GetParam() == Inner::Empties) {
        EXPECT_THROW(collector->QueryInputEvents(), std::bad_function_call);
        return;
    }
    collector->QueryInputEvents();
    switch (GetParam()) {
    case Inner::Replaces:
        EXPECT_EQ(seen, (std::vector<short>{1, 2, -1}));
        break;
    case Inner::Clears:
        EXPECT_EQ(seen, (std::vector<short>{1, 2}));
        EXPECT_EQ(tracer->GetPosition().x, 3);
        break;
    default:
        EXPECT_EQ(seen, (std::vector<short>{1, 2}));
        EXPECT_TRUE(probe.cursorTracers().empty());
        break;
    }
}

std::string InnerName(const ::testing::TestParamInfo<Inner>& info) {
    const char* const names[] = {"Replaces", "Empties", "Clears", "Drops"};
    return names[static_cast<int>(info.param)];
}

INSTANTIATE_TEST_SUITE_P(Reentry, NestedCall,
                         ::testing::Values(Inner::Replaces, Inner::Empties, Inner::Clears,
                                           Inner::Drops),
                         InnerName);

// What a callback queues by polling during a drain: key events wait for the next tick; window
// events and buttons that arrive while their own queue drains are dropped.
TEST_F(Reentry, EventsPolledDuringADrain) {
    int closes = 0, presses = 0;
    auto close = collector->CreateWindowReactor(WindowEvent::Close);
    close->SetCallback([&] {
        if (++closes == 1) {
            PushWindow(SDL_WINDOWEVENT_CLOSE);
            Press(SDLK_a);
            collector->QueryInputEvents();
        }
    });
    auto key = collector->CreateKeyReactor(Key::A, 0);
    key->SetPressCallback([&](auto) { return ++presses, false; });
    PushWindow(SDL_WINDOWEVENT_CLOSE);
    Deliver(2);
    EXPECT_EQ(closes, 1);
    EXPECT_EQ(presses, 1);
}

// Appends to the vector under a running walk move its storage; the walk goes on by index and
// reaches the new reactors, which lie ahead of it.
TEST_F(Reentry, AppendsThatMoveTheVectorDoNotStrandTheWalk) {
    int created = 0, called = 0;
    std::vector<Zenk::IntrudablePointer<IWindowReactor>> made;
    auto first = collector->CreateWindowReactor(WindowEvent::Close);
    first->SetCallback([&] {
        for (int i = 0; i < 40; ++i, ++created) {
            made.push_back(collector->CreateWindowReactor(WindowEvent::Close));
            made.back()->SetCallback([&] { ++called; });
        }
    });
    PushWindow(SDL_WINDOWEVENT_CLOSE);
    Deliver();
    EXPECT_EQ(called, created);
    made.clear();
    first.Reset();
    EXPECT_TRUE(probe.windowReactors().empty());
}

// A press walk while a callback drops itself and its neighbour and creates a reactor ahead.
TEST_F(Reentry, AReactorDroppingItselfAndItsNeighbourInOneWalk) {
    std::vector<std::string> log;
    auto first = collector->CreateKeyReactor(Key::A, 0);
    auto second = collector->CreateKeyReactor(Key::A, 0);
    auto third = collector->CreateKeyReactor(Key::A, 1);
    first->SetPressCallback([&](auto) {
        log.push_back("first");
        first.Reset();                                      // itself: it must return normally
        second.Reset();                                     // its neighbour: never called again
        auto late = collector->CreateKeyReactor(Key::A, 2); // ahead of the walk: reached
        late->SetPressCallback([&](auto) { return log.push_back("late"), false; });
        kept = late;
        return false;
    });
    second->SetPressCallback([&](auto) { return log.push_back("second"), false; });
    third->SetPressCallback([&](auto) { return log.push_back("third"), false; });
    Press(SDLK_a);
    Deliver();
    EXPECT_EQ(log, (std::vector<std::string>{"first", "third", "late"}));
    EXPECT_EQ(probe.keyReactors()[Key::A].size(), 2u) << "tombstones are gone after the walk";
    kept.Reset();
}

} // namespace
} // namespace Window
