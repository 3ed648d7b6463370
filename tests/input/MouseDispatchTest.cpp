// SPDX-License-Identifier: Zlib
#include "CollectorFixture.h"

#include <string>
#include <vector>

namespace Window {
namespace {

using MouseDispatch = CollectorFixture;

// Every button callback gets 1, whatever the clicks; at any modal level; with the held modifiers.
TEST_F(MouseDispatch, PressHoldReleaseAllGetOne) {
    std::vector<std::string> log;
    collector->PushModalLevel();
    auto right = collector->CreateButtonReactor(Button::Right, 0);
    collector->PushModalLevel();
    collector->PushModalLevel();
    const auto record = [&](const char* what) {
        return [&log, what](unsigned int number, const std::set<Mode>& modes) {
            log.push_back(std::string(what) + std::to_string(number) + "/" +
                          std::to_string(modes.size()));
            return false;
        };
    };
    right->SetPressCallback(record("press"));
    right->SetHoldCallback(record("hold"));
    right->SetReleaseCallback(record("release"));
    Press(SDLK_RSHIFT);
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT, 2); // a double click
    Deliver();
    PushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT);
    Deliver();
    EXPECT_EQ(log, (std::vector<std::string>{"press1/1", "hold1/1", "release1/1"}));
    EXPECT_TRUE(probe.heldButtons().empty());
}

TEST_F(MouseDispatch, SideButtonsHaveNoEffectAndAPressWithNobodyIsStillHeld) {
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_X1);
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_X2);
    PushWheel(0, 3); // horizontal only
    Deliver();
    EXPECT_TRUE(probe.heldButtons().empty());
    EXPECT_TRUE(probe.buttonReactors().empty());
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_MIDDLE);
    Deliver();
    EXPECT_EQ(probe.heldButtons(), std::set<Button>{Button::Middle});
    EXPECT_EQ(probe.buttonReactors().count(Button::Middle), 1u);
}

// The wheel is a pulse per event, whatever its size, in order with the buttons.
TEST_F(MouseDispatch, WheelEventsArePressPulses) {
    std::vector<std::string> log;
    auto up = collector->CreateButtonReactor(Button::WheelUp, 0);
    up->SetPressCallback(
        [&](unsigned int n, auto) { return log.push_back("up" + std::to_string(n)), false; });
    up->SetHoldCallback([&](unsigned int, auto) { return log.push_back("up hold"), false; });
    up->SetReleaseCallback([&](unsigned int, auto) { return log.push_back("up release"), false; });
    auto down = collector->CreateButtonReactor(Button::WheelDown, 0);
    down->SetPressCallback([&](unsigned int, auto) { return log.push_back("down"), false; });
    auto left = collector->CreateButtonReactor(Button::Left, 0);
    left->SetPressCallback([&](unsigned int, auto) { return log.push_back("left"), false; });
    PushWheel(5);
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT);
    PushWheel(1);
    PushWheel(-2);
    Deliver(2);
    EXPECT_EQ(log, (std::vector<std::string>{"up1", "left", "up1", "down"}));
    EXPECT_EQ(probe.heldButtons(), std::set<Button>{Button::Left});
}

TEST_F(MouseDispatch, TracersWrapStoreFirstAndKeepTheirPositionWhenSkipped) {
    auto first = collector->CreateCursorTracer(1);
    auto second = collector->CreateCursorTracer(2);
    Zenk::two_dimensional_coordinate<short> seenInside{};
    first->SetCallback([&](auto position, auto) {
        seenInside = first->GetPosition();
        return position.x < 0; // consume only wrapped positions
    });
    EXPECT_EQ(second->GetPosition(), (Zenk::two_dimensional_coordinate<short>{0, 0}));
    collector->PushModalLevel(); // tracers answer at every level and during text input
    collector->StartTextInput();
    PushMotion(100, 200);
    collector->QueryInputEvents();
    EXPECT_EQ(seenInside, (Zenk::two_dimensional_coordinate<short>{100, 200}));
    EXPECT_EQ(second->GetPosition(), (Zenk::two_dimensional_coordinate<short>{100, 200}));

    PushMotion(70000, -1); // 70000 - 65536 = 4464; beyond 32767 a coordinate turns negative
    PushMotion(40000, 5);
    collector->QueryInputEvents();
    EXPECT_EQ(first->GetPosition(), (Zenk::two_dimensional_coordinate<short>{-25536, 5}));
    EXPECT_EQ(second->GetPosition(), (Zenk::two_dimensional_coordinate<short>{4464, -1}))
        << "the consumer kept the second tracer from the last event";

    first->ClearAllCallbacks(); // still follows, no longer consumes
    PushMotion(-3, 9);
    collector->QueryInputEvents();
    EXPECT_EQ(first->GetPosition(), (Zenk::two_dimensional_coordinate<short>{-3, 9}));
    EXPECT_EQ(second->GetPosition(), (Zenk::two_dimensional_coordinate<short>{-3, 9}));
}

} // namespace
} // namespace Window
