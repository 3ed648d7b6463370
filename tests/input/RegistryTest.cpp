// SPDX-License-Identifier: Zlib
#include "CollectorFixture.h"
#include "reactors/KeyReactorImpl.h"
#include "reactors/ModeReactorImpl.h"
#include "reactors/TextReactorImpl.h"

#include <vector>

namespace Window {
namespace {

using Registry = CollectorFixture;

std::vector<long long> IdsIn(const std::multimap<unsigned short, KeyReactorImpl*>& entries) {
    std::vector<long long> ids;
    for (const auto& [priority, reactor] : entries)
        ids.push_back(CollectorProbe::IdOf(reactor));
    return ids;
}

TEST_F(Registry, EveryReactorTakesAFreshIdAndTheCurrentLevel) {
    auto first = collector->CreateTextReactor();
    collector->PushModalLevel();
    auto second = collector->CreateTextReactor();
    collector->PushModalLevel(); // a later level does not touch existing reactors
    auto& texts = probe.textReactors();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts.begin()->first, 1);
    EXPECT_EQ(texts.begin()->second->modalLevel, 0);
    EXPECT_EQ(std::next(texts.begin())->first, 2);
    EXPECT_EQ(std::next(texts.begin())->second->modalLevel, 1);
}

TEST_F(Registry, ADiscardedHandleLeavesNothingBehind) {
    collector->CreateKeyReactor(Key::A, 3);
    collector->CreateModeReactor(Mode::LeftAlt);
    collector->CreateButtonReactor(Button::Left, 0);
    collector->CreateCursorTracer(0);
    collector->CreateTextReactor();
    collector->CreateWindowReactor(WindowEvent::Close);
    EXPECT_TRUE(probe.registriesEmpty());
}

TEST_F(Registry, AReactorLivesUntilItsLastHandle) {
    auto handle = collector->CreateWindowReactor(WindowEvent::Close);
    auto copy = handle;
    handle.Reset();
    ASSERT_EQ(probe.windowReactors()[WindowEvent::Close].size(), 1u);
    int calls = 0;
    copy->SetCallback([&] { ++calls; });
    PushWindow(SDL_WINDOWEVENT_CLOSE);
    Deliver();
    EXPECT_EQ(calls, 1);
    copy.Reset();
    EXPECT_TRUE(probe.windowReactors().empty());
}

TEST_F(Registry, RemovalKeepsTheOrderOfTheOthers) {
    std::vector<Zenk::IntrudablePointer<IModeReactor>> modes;
    std::vector<Zenk::IntrudablePointer<IKeyReactor>> keys;
    for (int i = 0; i < 3; ++i) {
        modes.push_back(collector->CreateModeReactor(Mode::LeftCtrl));
        keys.push_back(collector->CreateKeyReactor(Key::B, 7));
    }
    // Ids: modes 1, 3, 5; keys 2, 4, 6. Drop the middle of each.
    modes[1].Reset();
    keys[1].Reset();
    const auto& modeEntries = probe.modeReactors()[Mode::LeftCtrl];
    ASSERT_EQ(modeEntries.size(), 2u);
    EXPECT_EQ(CollectorProbe::IdOf(modeEntries[0]), 1);
    EXPECT_EQ(CollectorProbe::IdOf(modeEntries[1]), 5);
    EXPECT_EQ(IdsIn(probe.keyReactors()[Key::B]), (std::vector<long long>{2, 6}));
}

TEST_F(Registry, TheLastReactorOfAnInputTakesItsKeyAlong) {
    auto key = collector->CreateKeyReactor(Key::C, 1);
    auto mode = collector->CreateModeReactor(Mode::RightAlt);
    auto button = collector->CreateButtonReactor(Button::Middle, 1);
    auto window = collector->CreateWindowReactor(WindowEvent::Maximize);
    key.Reset();
    mode.Reset();
    button.Reset();
    window.Reset();
    EXPECT_EQ(probe.keyReactors().count(Key::C), 0u);
    EXPECT_EQ(probe.modeReactors().count(Mode::RightAlt), 0u);
    EXPECT_EQ(probe.buttonReactors().count(Button::Middle), 0u);
    EXPECT_EQ(probe.windowReactors().count(WindowEvent::Maximize), 0u);
}

TEST_F(Registry, AnEmptyEntryFromDispatchSurvivesOtherRemovals) {
    Press(SDLK_d); // a look-up with nobody registered enters an empty multimap
    Deliver();
    ASSERT_EQ(probe.keyReactors().count(Key::D), 1u);
    auto other = collector->CreateKeyReactor(Key::E, 0);
    collector->RemoveReactor(12345); // an unknown id is no error
    other.Reset();
    EXPECT_EQ(probe.keyReactors().count(Key::D), 1u);
    EXPECT_EQ(probe.keyReactors().count(Key::E), 0u);
}

TEST_F(Registry, ClearedReactorsKeepTheirPlaceAndNeverConsume) {
    std::vector<int> calls;
    auto first = collector->CreateKeyReactor(Key::A, 0);
    auto second = collector->CreateKeyReactor(Key::A, 1);
    first->SetPressCallback([&](auto) { return calls.push_back(1), true; });
    second->SetPressCallback([&](auto) { return calls.push_back(2), false; });
    first->ClearAllCallbacks();
    Press(SDLK_a);
    Deliver();
    EXPECT_EQ(calls, std::vector<int>{2}) << "a cleared reactor returns false and stops nothing";
    first->SetPressCallback([&](auto) { return calls.push_back(1), false; });
    Release(SDLK_a);
    Press(SDLK_a);
    Deliver();
    EXPECT_EQ(calls, (std::vector<int>{2, 1, 2})) << "a setter brings it back in its old place";
}

TEST_F(Registry, WithoutAnIdGeneratorNothingIsMade) {
    Zenk::UnregisterInstance<Common::Unique::SRuntimeUniqueId>();
    EXPECT_THROW(collector->CreateKeyReactor(Key::A, 0), Zenk::MissingInstance);
    EXPECT_THROW(collector->CreateModeReactor(Mode::LeftAlt), Zenk::MissingInstance);
    EXPECT_THROW(collector->CreateButtonReactor(Button::Left, 0), Zenk::MissingInstance);
    EXPECT_THROW(collector->CreateCursorTracer(0), Zenk::MissingInstance);
    EXPECT_THROW(collector->CreateTextReactor(), Zenk::MissingInstance);
    EXPECT_THROW(collector->CreateWindowReactor(WindowEvent::Close), Zenk::MissingInstance);
    EXPECT_TRUE(probe.registriesEmpty());
}

} // namespace
} // namespace Window
