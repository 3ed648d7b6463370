// SPDX-License-Identifier: Zlib
#include "CollectorFixture.h"

#include <common/ApplicationErrorException.h>
#include <window/Configuration.h>

#include <stdexcept>
#include <vector>

namespace Window {
namespace {

using CollectorCore = CollectorFixture;

struct RateRow {
    const char* name;
    int pollRate;
    unsigned long long period;
};

// GoogleTest prints every row when it registers the cases; by default it dumps the bytes,
// padding included, which a memory checker reports as uninitialised reads.
void PrintTo(const RateRow& row, std::ostream* out) {
    *out << row.name;
}

class TickPeriod : public ::testing::TestWithParam<RateRow> {};

TEST_P(TickPeriod, FollowsThePollRate) {
    EXPECT_EQ(Window::Configuration::TickPeriod(GetParam().pollRate), GetParam().period);
}

// Out-of-range rates: zero or below serves the default rate, above a million the fastest.
INSTANTIATE_TEST_SUITE_P(
    Rates, TickPeriod,
    ::testing::Values(RateRow{"Default", 60, 16666}, RateRow{"One", 1, 1000000},
                      RateRow{"Thousand", 1000, 1000}, RateRow{"Million", 1000000, 1},
                      RateRow{"Zero", 0, 16666}, RateRow{"Negative", -5, 16666},
                      RateRow{"AboveMillion", 2000000, 1}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CollectorCore, TheTickerIsMadeOnceFromTheSetting) {
    config.values["Window/Input/PollRate"] = "250";
    collector->QueryInputEvents();
    config.values["Window/Input/PollRate"] = "10"; // too late: read once
    collector->QueryInputEvents();
    collector->QueryInputEvents();
    EXPECT_EQ(frames.periods, std::vector<unsigned long long>{4000});
    EXPECT_EQ(config.reads, std::vector<std::string>{"Window/Input/PollRate"});
}

TEST_F(CollectorCore, MissingServicesLeaveNoTickerAndTheNextCallRetries) {
    PushKey(SDL_KEYDOWN, SDLK_a);
    Zenk::UnregisterInstance<Common::SFrameUtility>();
    EXPECT_THROW(collector->QueryInputEvents(), Zenk::MissingInstance);
    Zenk::RegisterInstance<Common::SFrameUtility>(frames);
    Zenk::UnregisterInstance<Common::Config::SConfigFile>();
    EXPECT_THROW(collector->QueryInputEvents(), Zenk::MissingInstance);
    EXPECT_FALSE(probe.hasTicker());
    EXPECT_TRUE(frames.periods.empty());
    EXPECT_TRUE(probe.keyEvents().empty()) << "nothing is polled before the ticker stands";

    Zenk::RegisterInstance<Common::Config::SConfigFile>(config);
    collector->QueryInputEvents();
    EXPECT_TRUE(probe.hasTicker());
    EXPECT_EQ(probe.keyEvents().size(), 1u);
}

// The ticker is kept before its callback is set: a refused callback makes no second ticker.
TEST_F(CollectorCore, ATickerThatRefusesItsCallbackIsKeptAndNotMadeAgain) {
    frames.refuseCallbacks = true;
    EXPECT_THROW(collector->QueryInputEvents(), std::runtime_error);
    EXPECT_TRUE(probe.hasTicker());
    collector->QueryInputEvents();
    EXPECT_EQ(frames.periods.size(), 1u);
}

// Where each kind of event goes, with text input off and on.
struct GateRow {
    const char* name;
    SDL_Event event;
    bool textInput;
    std::size_t keys, texts, windows, buttons;
};

// Printed by name: GoogleTest would dump the bytes, padding included (uninitialised for a memory
// checker).
void PrintTo(const GateRow& row, std::ostream* out) {
    *out << row.name;
}

class Gate : public CollectorFixture, public ::testing::WithParamInterface<GateRow> {};

TEST_P(Gate, SortsEachEventIntoItsQueue) {
    const GateRow& row = GetParam();
    if (row.textInput)
        collector->StartTextInput();
    SDL_Event event = row.event;
    Push(event);
    collector->QueryInputEvents();
    EXPECT_EQ(probe.keyEvents().size(), row.keys);
    EXPECT_EQ(probe.textEvents().size(), row.texts);
    EXPECT_EQ(probe.windowEvents().size(), row.windows);
    EXPECT_EQ(probe.buttonEvents().size(), row.buttons);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Gate,
    ::testing::Values(
        GateRow{"Window", MakeOfType(SDL_WINDOWEVENT), true, 0, 0, 1, 0},
        GateRow{"KeyOff", MakeKey(SDL_KEYDOWN, SDLK_a), false, 1, 0, 0, 0},
        GateRow{"KeyRepeatOff", MakeKey(SDL_KEYDOWN, SDLK_a, 1), false, 1, 0, 0, 0},
        GateRow{"KeyOn", MakeKey(SDL_KEYDOWN, SDLK_a), true, 0, 0, 0, 0},
        GateRow{"ModifierOn", MakeKey(SDL_KEYDOWN, SDLK_LSHIFT), true, 0, 0, 0, 0},
        GateRow{"BackspaceUpOn", MakeKey(SDL_KEYUP, SDLK_BACKSPACE), true, 1, 0, 0, 0},
        GateRow{"BackspaceRepeatOn", MakeKey(SDL_KEYDOWN, SDLK_BACKSPACE, 1), true, 0, 0, 0, 0},
        GateRow{"TextOff", MakeOfType(SDL_TEXTINPUT), false, 0, 0, 0, 0},
        GateRow{"EditingOn", MakeOfType(SDL_TEXTEDITING), true, 0, 1, 0, 0},
        GateRow{"Wheel", MakeOfType(SDL_MOUSEWHEEL), false, 0, 0, 0, 1},
        GateRow{"Quit", MakeOfType(SDL_QUIT), false, 0, 0, 0, 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CollectorCore, TheGateWorksAtPollingTimeOnly) {
    PushKey(SDL_KEYDOWN, SDLK_a);
    collector->QueryInputEvents();
    collector->StartTextInput(); // what was queued before the switch is still delivered
    EXPECT_EQ(probe.keyEvents().size(), 1u);
    frames.Tick();
    EXPECT_EQ(probe.heldKeys().count(Key::A), 1u);
}

TEST_F(CollectorCore, ModalLevelsStopAt255AndAtZero) {
    EXPECT_EQ(collector->PopModalLevel(), 0);
    for (int level = 1; level <= 255; ++level)
        ASSERT_EQ(collector->PushModalLevel(), level);
    try {
        collector->PushModalLevel();
        FAIL() << "the 256th level was accepted";
    } catch (const Common::ApplicationErrorException& error) {
        EXPECT_STREQ(error.what(), "Too many modal windows");
    }
    EXPECT_EQ(probe.modalLevel(), 255);
    EXPECT_EQ(collector->PopModalLevel(), 254);
}

TEST_F(CollectorCore, MotionIsDeliveredAtOnceAndAPressOnTheNextTick) {
    std::vector<std::string> order;
    auto tracer = collector->CreateCursorTracer(0);
    tracer->SetCallback([&](auto, auto) {
        order.push_back("motion");
        return false;
    });
    auto key = collector->CreateKeyReactor(Key::A, 0);
    key->SetPressCallback([&](auto) {
        order.push_back("press");
        return false;
    });
    Press(SDLK_a);
    PushMotion(3, 4);
    collector->QueryInputEvents();
    EXPECT_EQ(order, std::vector<std::string>{"motion"});
    frames.Tick();
    EXPECT_EQ(order, (std::vector<std::string>{"motion", "press"}));
}

// Whatever order SDL delivered them in, one tick drains keys, window events, buttons, text, and
// then calls the holds.
TEST_F(CollectorCore, OneTickDrainsInItsFixedOrder) {
    std::vector<std::string> order;
    auto text = collector->CreateTextReactor();
    text->SetCallback([&](const std::wstring&) { order.push_back("text"); });
    auto button = collector->CreateButtonReactor(Button::Left, 0);
    button->SetPressCallback([&](unsigned int, auto) { return order.push_back("button"), false; });
    auto window = collector->CreateWindowReactor(WindowEvent::Close);
    window->SetCallback([&] { order.push_back("window"); });
    auto key = collector->CreateKeyReactor(Key::Backspace, 0);
    key->SetPressCallback([&](auto) { return order.push_back("key"), false; });
    key->SetHoldCallback([&](auto) { return order.push_back("hold"), false; });
    collector->StartTextInput();
    PushText("t");
    PushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT);
    PushWindow(SDL_WINDOWEVENT_CLOSE);
    Press(SDLK_BACKSPACE);
    Deliver();
    EXPECT_EQ(order, (std::vector<std::string>{"key", "window", "button", "text", "hold"}));
}

} // namespace
} // namespace Window
