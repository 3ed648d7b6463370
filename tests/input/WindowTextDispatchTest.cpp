// SPDX-License-Identifier: Zlib
#include "CollectorFixture.h"
#include "input/Utf8ToWide.h"

#include <common/ApplicationErrorException.h>

#include <string>
#include <vector>

namespace Window {
namespace {

using WindowTextDispatch = CollectorFixture;

TEST_F(WindowTextDispatch, WindowEventsReachEveryReactorAtEveryLevel) {
    std::vector<std::string> log;
    auto first = collector->CreateWindowReactor(WindowEvent::Close);
    first->SetCallback([&] { log.push_back("close 1"); });
    collector->PushModalLevel();
    auto second = collector->CreateWindowReactor(WindowEvent::Close);
    second->SetCallback([&] { log.push_back("close 2"); });
    auto minimize = collector->CreateWindowReactor(WindowEvent::Minimize);
    minimize->SetCallback([&] { log.push_back("minimize"); });
    collector->PushModalLevel();
    PushWindow(SDL_WINDOWEVENT_MINIMIZED);
    PushWindow(SDL_WINDOWEVENT_RESTORED); // not in the vocabulary: no effect, no entry
    PushWindow(SDL_WINDOWEVENT_CLOSE);
    Deliver();
    EXPECT_EQ(log, (std::vector<std::string>{"minimize", "close 1", "close 2"}));
    EXPECT_EQ(probe.windowReactors().size(), 2u);
}

TEST_F(WindowTextDispatch, TextGoesToReactorsOfTheLevelInIdOrder) {
    std::vector<std::wstring> log;
    auto first = collector->CreateTextReactor();
    collector->PushModalLevel();
    auto upper = collector->CreateTextReactor();
    collector->PopModalLevel();
    auto second = collector->CreateTextReactor();
    second->SetCallback([&](const std::wstring& text) { log.push_back(L"2:" + text); });
    first->SetCallback([&](const std::wstring& text) { log.push_back(L"1:" + text); });
    upper->SetCallback([&](const std::wstring& text) { log.push_back(L"upper:" + text); });
    auto cleared = collector->CreateTextReactor();
    cleared->SetCallback([&](const std::wstring& text) { log.push_back(L"cleared:" + text); });
    cleared->ClearCallback();
    collector->StartTextInput();
    PushText("\xC3\xA9t\xC3\xA9");
    PushText("composing", SDL_TEXTEDITING);
    Deliver();
    EXPECT_EQ(log, (std::vector<std::wstring>{L"1:\u00e9t\u00e9", L"2:\u00e9t\u00e9"}));
}

TEST_F(WindowTextDispatch, WithoutTextReactorsTextIsDroppedUnconverted) {
    collector->StartTextInput();
    PushText(""); // would fail to convert
    Deliver();
    EXPECT_TRUE(probe.textEvents().empty());
    auto late = collector->CreateTextReactor();
    bool called = false;
    late->SetCallback([&](const std::wstring&) { called = true; });
    frames.Tick();
    EXPECT_FALSE(called) << "nothing is kept for a later reactor";
}

TEST_F(WindowTextDispatch, AnEmptyTextFailsTheTickAndHoldIsSkipped) {
    int holds = 0;
    auto key = collector->CreateKeyReactor(Key::A, 0);
    key->SetHoldCallback([&](auto) { return ++holds, false; });
    auto reader = collector->CreateTextReactor();
    Press(SDLK_a);
    collector->QueryInputEvents();
    collector->StartTextInput();
    PushText("");
    collector->QueryInputEvents();
    try {
        frames.Tick();
        FAIL() << "an empty text converted";
    } catch (const Common::ApplicationErrorException& error) {
        EXPECT_STREQ(error.what(), "Failed to decode UTF-8 string: ");
    }
    EXPECT_EQ(holds, 0);
    frames.Tick();
    EXPECT_EQ(holds, 1);
}

// The platform's decoder has tests of its own; here only what the dispatch relies on.
TEST(Utf8ToWide, OneWideCharacterPerCodePoint) {
    EXPECT_EQ(Utf8ToWide("\xC3\xA9"), L"\u00e9");
    EXPECT_EQ(Utf8ToWide("a\xFF"), L"a\uFFFD");
}

} // namespace
} // namespace Window
