// SPDX-License-Identifier: Zlib
// Callbacks that create and drop reactors, themselves included, while walks run over the same
// registries. Run under AddressSanitizer, any use of a dead iterator, vector or function fails
// the run; the test itself checks that no dropped reactor is ever called again.

#include "CollectorFixture.h"

#include <chrono>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

namespace Window {
namespace {

class Reentry : public CollectorFixture {
protected:
    // What a reactor's callbacks become: the test's own, the defaults, or empty functions.
    enum class Arming { Act, Clear, Blank };

    // A reactor of the pool: the pool holds its only handle, so erasing the slot kills it.
    struct Slot {
        int token;
        Zenk::IntrudablePointer<Zenk::Intrudable> handle;
        std::function<void(Arming)> rearm; // replaces the reactor's callbacks
    };

    void TearDown() override {
        pool.clear();
        CollectorFixture::TearDown();
    }

    // What every callback does: check it may run, then change the world at random.
    bool Act(int token) {
        EXPECT_EQ(dead.count(token), 0u) << "a dropped reactor was called (seed " << seed << ")";
        ++calls;
        const auto roll = random() % 100;
        if (roll < 12) {
            MakeReactor();
        } else if (roll < 24 && !pool.empty()) {
            Drop(random() % pool.size());
        } else if (roll < 30) {
            DropToken(token); // itself
        } else if (roll < 36) {
            Rearm(token, Arming::Act); // replaces the running callback
        } else if (roll < 40) {
            if (probe.modalLevel() < 2)
                collector->PushModalLevel();
        } else if (roll < 44) {
            collector->PopModalLevel();
        } else if (roll < 47 && !pool.empty()) {
            pool[random() % pool.size()].rearm(Arming::Act); // another's, perhaps running too
        } else if (roll < 49) {
            Rearm(token, random() % 2 ? Arming::Clear : Arming::Blank);
        } else if (roll < 50 && !pool.empty()) {
            pool[random() % pool.size()].rearm(Arming::Blank); // its next call throws
        } else if (roll < 56 && nesting < 3) {
            // Polls again: the motion reaches the tracers at once, perhaps this very callback.
            ++nesting;
            PushMotion(static_cast<Sint32>(random() % 2000), 0);
            try {
                PollTwice();
            } catch (const std::bad_function_call&) {
                ++emptyCalls;
            }
            --nesting;
        }
        return random() % 4 == 0;
    }

    // Polls from inside a callback so that an event pushed there is dispatched there. SDL ends
    // each round of polling at a marker that it queued when the round began, behind the events
    // then waiting; an event pushed during the round lies behind the marker, so the first call
    // ends at the marker and the second one reaches the event.
    void PollTwice() {
        collector->QueryInputEvents();
        collector->QueryInputEvents();
    }

    void Rearm(int token, Arming arming) {
        for (Slot& slot : pool)
            if (slot.token == token)
                return slot.rearm(arming);
    }

    void Drop(std::size_t index) {
        dead.insert(pool[index].token);
        Slot slot = std::move(pool[index]);
        pool.erase(pool.begin() + static_cast<std::ptrdiff_t>(index));
        // `slot` dies here, and with it the reactor, unless a walk is calling it right now.
    }

    void DropToken(int token) {
        for (std::size_t i = 0; i < pool.size(); ++i)
            if (pool[i].token == token)
                return Drop(i);
    }

    // Keeps the new reactor's only handle; `arm` sets its callbacks, now and on a rearm, to one
    // function that it makes of `act`, or to empty ones when `act` is empty.
    template <class Handle, class Arm> void Keep(Handle handle, Arm arm) {
        auto* reactor = handle.Get();
        const int token = nextToken++;
        auto rearm = [this, reactor, token, arm](Arming arming) {
            if (arming == Arming::Clear)
                return Clear(*reactor);
            std::function<bool()> act;
            if (arming == Arming::Act)
                act = [this, token] { return Act(token); };
            arm(*reactor, act);
        };
        rearm(Arming::Act);
        pool.push_back({token, std::move(handle), std::move(rearm)});
    }

    template <class Reactor> static void Clear(Reactor& reactor) { reactor.ClearAllCallbacks(); }
    static void Clear(ITextReactor& reactor) { reactor.ClearCallback(); }

    // The function a reactor of kind `Callback` gets: one that acts, or an empty one.
    template <class Callback> static Callback Wrap(const std::function<bool()>& act) {
        if (!act)
            return nullptr;
        return [act](auto&&...) { return static_cast<typename Callback::result_type>(act()); };
    }

    void MakeReactor() {
        if (pool.size() >= 60)
            return;
        const auto priority = static_cast<unsigned short>(random() % 4);
        const auto pick = [this](auto first, auto... others) {
            const decltype(first) all[] = {first, others...};
            return all[random() % (1 + sizeof...(others))];
        };
        switch (random() % 6) {
        case 0:
            return Keep(collector->CreateKeyReactor(pick(Key::A, Key::B, Key::C), priority),
                        [](IKeyReactor& r, const auto& act) {
                            const auto f = Wrap<KeyCallback>(act);
                            r.SetPressCallback(f);
                            r.SetHoldCallback(f);
                            r.SetReleaseCallback(f);
                        });
        case 1:
            return Keep(collector->CreateModeReactor(pick(Mode::LeftShift, Mode::RightCtrl)),
                        [](IModeReactor& r, const auto& act) {
                            const auto f = Wrap<ModeCallback>(act);
                            r.SetPressCallback(f);
                            r.SetHoldCallback(f);
                            r.SetReleaseCallback(f);
                        });
        case 2:
            return Keep(collector->CreateButtonReactor(
                            pick(Button::Left, Button::Right, Button::WheelUp), priority),
                        [](IButtonReactor& r, const auto& act) {
                            const auto f = Wrap<ButtonCallback>(act);
                            r.SetPressCallback(f);
                            r.SetHoldCallback(f);
                            r.SetReleaseCallback(f);
                        });
        case 3:
            return Keep(collector->CreateCursorTracer(priority),
                        [](ICursorTracer& r, const auto& act) {
                            r.SetCallback(Wrap<CursorCallback>(act));
                        });
        case 4:
            return Keep(collector->CreateTextReactor(), [](ITextReactor& r, const auto& act) {
                r.SetCallback(Wrap<TextCallback>(act));
            });
        default:
            return Keep(
                collector->CreateWindowReactor(pick(WindowEvent::Close, WindowEvent::Minimize)),
                [](IWindowReactor& r, const auto& act) {
                    r.SetCallback(Wrap<WindowEventCallback>(act));
                });
        }
    }

    void PushRandomEvent() {
        const SDL_Keycode syms[] = {SDLK_a, SDLK_b, SDLK_c, SDLK_LSHIFT, SDLK_RCTRL};
        const Uint8 mouseButtons[] = {SDL_BUTTON_LEFT, SDL_BUTTON_RIGHT, SDL_BUTTON_MIDDLE};
        switch (random() % 7) {
        case 0:
            Press(syms[random() % 5]);
            break;
        case 1:
            Release(syms[random() % 5]);
            break;
        case 2:
            PushButton(random() % 2 ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP,
                       mouseButtons[random() % 3]);
            break;
        case 3:
            PushWheel(static_cast<Sint32>(random() % 3) - 1);
            break;
        case 4:
            PushMotion(static_cast<Sint32>(random() % 2000), static_cast<Sint32>(random() % 2000));
            break;
        case 5:
            PushWindow(random() % 2 ? SDL_WINDOWEVENT_CLOSE : SDL_WINDOWEVENT_MINIMIZED);
            break;
        default:
            PushText("x\xC3\xA9");
            break;
        }
    }

    static unsigned int SeedFromEnvironment() {
        const char* text = std::getenv("WINDOW_STRESS_SEED");
        return text != nullptr ? static_cast<unsigned int>(std::strtoul(text, nullptr, 10))
                               : 20261123u;
    }

    const unsigned int seed = SeedFromEnvironment();
    std::mt19937 random{seed};
    std::vector<Slot> pool;
    std::unordered_set<int> dead;
    int nextToken = 0;
    Zenk::IntrudablePointer<IKeyReactor> kept;
    long calls = 0;
    long emptyCalls = 0; // walks that an emptied callback ended
    int nesting = 0;     // polls made from inside callbacks, one inside the other
};

TEST_F(Reentry, RandomStreamsWhileCallbacksCreateAndDropReactors) {
    collector->StartTextInput();
    collector->StopTextInput();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    int round = 0;
    for (; round < 1000 && std::chrono::steady_clock::now() < deadline; ++round) {
        while (pool.size() < 12)
            MakeReactor();
        pool[random() % pool.size()].rearm(Arming::Act); // undoes the clears, one at a time
        if (round % 3 == 0)
            collector->StartTextInput();
        else
            collector->StopTextInput();
        for (int i = 0; i < 8; ++i)
            PushRandomEvent();
        try { // an emptied callback throws out of the walk that reaches it
            collector->QueryInputEvents();
            frames.Tick(2);
        } catch (const std::bad_function_call&) {
            ++emptyCalls;
            for (Slot& slot : pool) // so that the stream goes on reaching reactors
                slot.rearm(Arming::Act);
        }
    }
    SCOPED_TRACE("seed " + std::to_string(seed));
    // About six calls a round here; a slow run (a memory checker) does fewer rounds, not fewer
    // calls per round.
    EXPECT_GT(calls, 3 * round) << "the stream reached too few reactors to prove anything";
    EXPECT_GT(emptyCalls, 0) << "no walk met an emptied callback";
    RecordProperty("calls", static_cast<int>(calls));
    RecordProperty("emptyCalls", static_cast<int>(emptyCalls));

    pool.clear();
    // Every reactor gone: no registry holds an entry for any of them.
    for (const auto& [key, entries] : probe.keyReactors())
        EXPECT_TRUE(entries.empty());
    for (const auto& [button, entries] : probe.buttonReactors())
        EXPECT_TRUE(entries.empty());
    for (const auto& [event, entries] : probe.windowReactors())
        EXPECT_TRUE(entries.empty());
    EXPECT_TRUE(probe.modeReactors().empty());
    EXPECT_TRUE(probe.textReactors().empty());
    EXPECT_TRUE(probe.cursorTracers().empty());
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
