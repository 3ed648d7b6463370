// SPDX-License-Identifier: Zlib
#include "CollectorFixture.h"

#include <functional>
#include <string>
#include <vector>

namespace Window {
namespace {

// --- The walk rule, shared by keys, buttons and cursor tracers -------------------------------

struct Entry {
    unsigned short priority;
    unsigned char level; // the modal level the reactor is made at
    bool consumes;
};

struct WalkRow {
    const char* name;
    std::vector<Entry> entries; // in creation order
    unsigned char level;        // the collector's level when the event arrives
    std::vector<int> keyCalls;  // indices of the entries called, in calling order
    std::vector<int> mouseCalls;
};

// Printed by name: GoogleTest would dump the bytes, padding included (uninitialised for a memory
// checker).
void PrintTo(const WalkRow& row, std::ostream* out) {
    *out << row.name;
}

enum class Kind { Key, Button, Cursor };

class Walk : public CollectorFixture,
             public ::testing::WithParamInterface<std::tuple<Kind, WalkRow>> {
protected:
    // Makes the reactors of the row, each at its level, each recording its index when called.
    void Build(const WalkRow& row, Kind kind) {
        for (std::size_t i = 0; i < row.entries.size(); ++i) {
            const Entry entry = row.entries[i];
            SetLevel(entry.level);
            const auto record = [this, index = static_cast<int>(i), entry] {
                return calls.push_back(index), entry.consumes;
            };
            if (kind == Kind::Key) {
                auto reactor = collector->CreateKeyReactor(Key::A, entry.priority);
                reactor->SetPressCallback([record](auto) { return record(); });
                reactors.emplace_back(std::move(reactor));
            } else if (kind == Kind::Button) {
                auto reactor = collector->CreateButtonReactor(Button::Left, entry.priority);
                reactor->SetPressCallback([record](unsigned int, auto) { return record(); });
                reactors.emplace_back(std::move(reactor));
            } else {
                auto reactor = collector->CreateCursorTracer(entry.priority);
                reactor->SetCallback([record](auto, auto) { return record(); });
                reactors.emplace_back(std::move(reactor));
            }
        }
        SetLevel(row.level);
    }

    void TearDown() override {
        reactors.clear(); // reactors go before the collector
        CollectorFixture::TearDown();
    }

    std::vector<int> calls;
    std::vector<Zenk::IntrudablePointer<Zenk::Intrudable>> reactors;
};

TEST_P(Walk, CallsByPriorityAndStopsAtTheFirstChangeAfterAConsumer) {
    const auto& [kind, row] = GetParam();
    Build(row, kind);
    switch (kind) {
    case Kind::Key:
        Press(SDLK_a);
        break;
    case Kind::Button:
        PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT);
        break;
    case Kind::Cursor:
        PushMotion(1, 2);
        break;
    }
    Deliver();
    EXPECT_EQ(calls, kind == Kind::Key ? row.keyCalls : row.mouseCalls);
}

// Mouse walks ignore the modal level, so rows with levels tell the two rules apart.
const WalkRow walkRows[] = {
    {"SameGroupAllRun", {{1, 0, true}, {1, 0, false}, {2, 0, false}}, 0, {0, 1}, {0, 1}},
    {"LateConsumerInGroup", {{0, 0, false}, {1, 0, true}, {1, 0, false}}, 0, {0, 1, 2}, {0, 1, 2}},
    {"TiesInCreationOrder", {{5, 0, false}, {0, 0, false}, {5, 0, false}}, 0, {1, 0, 2}, {1, 0, 2}},
    {"ConsumerStopsLaterGroups", {{0, 0, true}, {1, 0, false}, {2, 0, false}}, 0, {0}, {0}},
    {"OtherLevelHasNoEffect", {{1, 0, true}, {2, 1, false}, {3, 0, false}}, 0, {0}, {0}},
    {"OtherLevelDoesNotMovePriority",
     {{0, 1, true}, {0, 0, true}, {0, 0, false}, {1, 0, false}},
     0,
     {1, 2},
     {0, 1, 2}},
    {"OnlyExactLevel", {{0, 0, false}, {0, 1, false}, {0, 2, false}}, 1, {1}, {0, 1, 2}},
    {"PriorityIsUnsigned", {{65535, 0, true}, {0, 0, true}}, 0, {1}, {1}},
    {"FirstPriorityZeroAfterNothing",
     {{0, 1, false}, {3, 0, true}, {3, 0, false}},
     0,
     {1, 2},
     {0, 1, 2}},
};

std::string WalkName(const ::testing::TestParamInfo<std::tuple<Kind, WalkRow>>& info) {
    static const char* const kinds[] = {"Key", "Button", "Cursor"};
    return std::string(kinds[static_cast<int>(std::get<0>(info.param))]) +
           std::get<1>(info.param).name;
}

INSTANTIATE_TEST_SUITE_P(Rows, Walk,
                         ::testing::Combine(::testing::Values(Kind::Key, Kind::Button,
                                                              Kind::Cursor),
                                            ::testing::ValuesIn(walkRows)),
                         WalkName);

// --- Keys and modifiers ---------------------------------------------------------------------

using KeyDispatch = CollectorFixture;

TEST_F(KeyDispatch, AKeyPressTravelsFromTheQueueToItsReactor) {
    std::vector<std::string> log;
    auto shift = collector->CreateModeReactor(Mode::LeftShift);
    shift->SetPressCallback([&] { log.push_back("shift press"); });
    auto a = collector->CreateKeyReactor(Key::A, 0);
    a->SetPressCallback([&](std::set<Mode> modes) {
        log.push_back("a press " + std::to_string(modes.count(Mode::LeftShift)));
        modes.clear(); // a callback's copy is its own
        return false;
    });
    a->SetHoldCallback([&](const std::set<Mode>& modes) {
        log.push_back("a hold " + std::to_string(modes.size()));
        return false;
    });
    Press(SDLK_LSHIFT);
    Press(SDLK_a);
    Deliver();
    EXPECT_EQ(log, (std::vector<std::string>{"shift press", "a press 1", "a hold 1"}));
    EXPECT_EQ(probe.heldModes(), std::set<Mode>{Mode::LeftShift});
    EXPECT_EQ(probe.heldKeys(), std::set<Key>{Key::A});
}

TEST_F(KeyDispatch, RepeatsAreIgnoredAndHoldFollowsTheTicker) {
    int presses = 0, holds = 0, releases = 0;
    auto a = collector->CreateKeyReactor(Key::A, 0);
    a->SetPressCallback([&](auto) { return ++presses, false; });
    a->SetHoldCallback([&](auto) { return ++holds, false; });
    a->SetReleaseCallback([&](auto) { return ++releases, false; });
    Press(SDLK_a); // a press and a release in one tick: no hold
    Release(SDLK_a);
    Deliver();
    EXPECT_EQ(presses + releases + holds, 2);
    presses = releases = 0;
    Press(SDLK_a);
    PushKey(SDL_KEYDOWN, SDLK_a, 1);
    PushKey(SDL_KEYDOWN, SDLK_a, 1);
    Deliver(3);
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(holds, 3);
    Release(SDLK_a);
    Deliver(2);
    EXPECT_EQ(holds, 3);
}

TEST_F(KeyDispatch, AKeyReleasedAtAnotherLevelReachesOnlyThatLevel) {
    std::vector<std::string> log;
    auto ground = collector->CreateKeyReactor(Key::A, 0);
    ground->SetReleaseCallback([&](auto) { return log.push_back("level 0"), false; });
    collector->PushModalLevel();
    auto menu = collector->CreateKeyReactor(Key::A, 0);
    menu->SetReleaseCallback([&](auto) { return log.push_back("level 1"), false; });
    collector->PopModalLevel();
    Press(SDLK_a);
    Deliver();
    collector->PushModalLevel();
    Release(SDLK_a);
    Deliver();
    EXPECT_EQ(log, std::vector<std::string>{"level 1"});
}

TEST_F(KeyDispatch, ModeReactorsTellTheSidesApartAndFollowTheirLevel) {
    std::vector<std::string> log;
    auto left = collector->CreateModeReactor(Mode::LeftAlt);
    left->SetPressCallback([&] { log.push_back("left"); });
    left->SetHoldCallback([&] { log.push_back("left hold"); });
    collector->PushModalLevel();
    auto upper = collector->CreateModeReactor(Mode::RightAlt);
    upper->SetPressCallback([&] { log.push_back("right at 1"); });
    collector->PopModalLevel();
    Press(SDLK_RALT);
    Deliver();
    EXPECT_TRUE(log.empty());
    Press(SDLK_LALT);
    Deliver();
    EXPECT_EQ(log, (std::vector<std::string>{"left", "left hold"}));
}

// Stuck keys: a release dropped at the text-input gate leaves the key held until it goes up
// again with text input off.
TEST_F(KeyDispatch, KeysReleasedDuringTextInputStayHeld) {
    int holds = 0;
    auto a = collector->CreateKeyReactor(Key::A, 0);
    a->SetHoldCallback([&](auto) { return ++holds, false; });
    Press(SDLK_a);
    Press(SDLK_LSHIFT);
    Press(SDLK_BACKSPACE);
    Deliver();
    collector->StartTextInput();
    Release(SDLK_a);
    Release(SDLK_LSHIFT);
    Release(SDLK_BACKSPACE);
    Deliver(2);
    EXPECT_EQ(probe.heldKeys(), std::set<Key>{Key::A}) << "Backspace passes the gate";
    EXPECT_EQ(probe.heldModes(), std::set<Mode>{Mode::LeftShift});
    EXPECT_EQ(holds, 3);
    collector->StopTextInput();
    Release(SDLK_a);
    Deliver();
    EXPECT_TRUE(probe.heldKeys().empty());
}

// The hold tick ends early when a walk is stopped: held keys after it and all modifiers miss
// this tick. A consumer that is last in its key's walk does not end it.
TEST_F(KeyDispatch, AConsumingHoldEndsTheHoldTick) {
    std::vector<std::string> log;
    auto b = collector->CreateKeyReactor(Key::B, 0);
    b->SetHoldCallback([&](auto) { return log.push_back("b0"), true; });
    auto bLater = collector->CreateKeyReactor(Key::B, 1);
    auto c = collector->CreateKeyReactor(Key::C, 0);
    c->SetHoldCallback([&](auto) { return log.push_back("c"), false; });
    auto shift = collector->CreateModeReactor(Mode::LeftShift);
    shift->SetHoldCallback([&] { log.push_back("shift"); });
    Press(SDLK_c);
    Press(SDLK_b);
    Press(SDLK_LSHIFT);
    Deliver();
    EXPECT_EQ(log, std::vector<std::string>{"b0"}) << "B orders before C by code";
    log.clear();
    bLater.Reset(); // now the consumer is alone: the tick goes on
    frames.Tick();
    EXPECT_EQ(log, (std::vector<std::string>{"b0", "c", "shift"}));
}

TEST_F(KeyDispatch, AConsumingButtonHoldTakesTheKeysTick) {
    std::vector<std::string> log;
    auto left = collector->CreateButtonReactor(Button::Left, 0);
    left->SetHoldCallback([&](unsigned int, auto) { return log.push_back("left"), true; });
    auto leftLater = collector->CreateButtonReactor(Button::Left, 9);
    auto a = collector->CreateKeyReactor(Key::A, 0);
    a->SetHoldCallback([&](auto) { return log.push_back("a"), false; });
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT);
    Press(SDLK_a);
    Deliver();
    EXPECT_EQ(log, std::vector<std::string>{"left"});
}

TEST_F(KeyDispatch, AnEmptyCallbackEndsTheTickAndTheNextStartsAfresh) {
    std::vector<std::string> log;
    auto a = collector->CreateKeyReactor(Key::A, 0);
    a->SetPressCallback(nullptr);
    auto close = collector->CreateWindowReactor(WindowEvent::Close);
    close->SetCallback([&] { log.push_back("close"); });
    Press(SDLK_a);
    Press(SDLK_b);
    PushWindow(SDL_WINDOWEVENT_CLOSE);
    collector->QueryInputEvents();
    EXPECT_THROW(frames.Tick(), std::bad_function_call);
    EXPECT_EQ(probe.heldKeys(), std::set<Key>{Key::A}) << "set before the callback; B is lost";
    EXPECT_TRUE(log.empty()) << "the later drains of that tick did not run";
    a->ClearAllCallbacks();
    frames.Tick();
    EXPECT_EQ(log, std::vector<std::string>{"close"});
}

} // namespace
} // namespace Window
