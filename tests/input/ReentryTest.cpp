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
    // A reactor of the pool: the pool holds its only handle, so erasing the slot kills it.
    struct Slot {
        int token;
        Zenk::IntrudablePointer<Zenk::Intrudable> handle;
        std::function<void()> rearm; // sets the reactor's callbacks anew
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
            for (Slot& slot : pool)
                if (slot.token == token) {
                    slot.rearm(); // replaces the running callback
                    break;
                }
        } else if (roll < 40) {
            if (probe.modalLevel() < 2)
                collector->PushModalLevel();
        } else if (roll < 44) {
            collector->PopModalLevel();
        }
        return random() % 4 == 0;
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

    // Keeps the new reactor's only handle; `arm` sets its callbacks, now and on a rearm.
    template <class Handle, class Arm> void Keep(Handle handle, Arm arm) {
        auto* reactor = handle.Get();
        const int token = nextToken++;
        auto rearm = [this, reactor, token, arm] {
            arm(*reactor, [this, token] { return Act(token); });
        };
        rearm();
        pool.push_back({token, std::move(handle), std::move(rearm)});
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
                        [](IKeyReactor& r, auto act) {
                            r.SetPressCallback([act](auto) { return act(); });
                            r.SetHoldCallback([act](auto) { return act(); });
                            r.SetReleaseCallback([act](auto) { return act(); });
                        });
        case 1:
            return Keep(collector->CreateModeReactor(pick(Mode::LeftShift, Mode::RightCtrl)),
                        [](IModeReactor& r, auto act) {
                            r.SetPressCallback([act] { act(); });
                            r.SetHoldCallback([act] { act(); });
                            r.SetReleaseCallback([act] { act(); });
                        });
        case 2:
            return Keep(collector->CreateButtonReactor(
                            pick(Button::Left, Button::Right, Button::WheelUp), priority),
                        [](IButtonReactor& r, auto act) {
                            r.SetPressCallback([act](unsigned int, auto) { return act(); });
                            r.SetHoldCallback([act](unsigned int, auto) { return act(); });
                            r.SetReleaseCallback([act](unsigned int, auto) { return act(); });
                        });
        case 3:
            return Keep(collector->CreateCursorTracer(priority), [](ICursorTracer& r, auto act) {
                r.SetCallback([act](auto, auto) { return act(); });
            });
        case 4:
            return Keep(collector->CreateTextReactor(), [](ITextReactor& r, auto act) {
                r.SetCallback([act](const std::wstring&) { act(); });
            });
        default:
            return Keep(
                collector->CreateWindowReactor(pick(WindowEvent::Close, WindowEvent::Minimize)),
                [](IWindowReactor& r, auto act) { r.SetCallback([act] { act(); }); });
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
};

TEST_F(Reentry, RandomStreamsWhileCallbacksCreateAndDropReactors) {
    collector->StartTextInput();
    collector->StopTextInput();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    for (int round = 0; round < 400 && std::chrono::steady_clock::now() < deadline; ++round) {
        while (pool.size() < 12)
            MakeReactor();
        if (round % 3 == 0)
            collector->StartTextInput();
        else
            collector->StopTextInput();
        for (int i = 0; i < 8; ++i)
            PushRandomEvent();
        collector->QueryInputEvents();
        frames.Tick(2);
    }
    SCOPED_TRACE("seed " + std::to_string(seed));
    EXPECT_GT(calls, 1000) << "the stream reached too few reactors to prove anything";

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
            collector->QueryInputEvents();
        }
        return false;
    });
    PushMotion(1, 0);
    collector->QueryInputEvents();
    EXPECT_EQ(seen, (std::vector<short>{1, 2}));
}

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
