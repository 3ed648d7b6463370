// SPDX-License-Identifier: Zlib
// The priority walk the lab shows is rebuilt from the reactor calls alone.
#include "WalkTrace.h"

#include "LabTest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace InputLab {
namespace {

// The lab's reactors of one key, as GameControls and MenuControls make them: the echo layer
// first (priority 1, level 0), then the game's (priority 0, level 0), then the menu's (priority
// 10, level 1). Each row calls some of them, in the library's order, at a modal level, with
// what they return; a call may leave the level changed, as the game's Escape does.
using Fate = WalkStep::Fate;

struct WalkCall {
    std::size_t reactor; // 0 echo, 1 game, 2 menu
    unsigned char level; // the modal level when it is called
    bool consumed;
};

struct WalkRow {
    const char* name;
    std::vector<WalkCall> calls;
    unsigned char levelAfter;
    std::vector<Fate> fates; // game, echo, menu: the library's order
    bool stopped;
};

void PrintTo(const WalkRow& row, std::ostream* out) {
    PrintName(row, out);
}

class WalkTest : public testing::TestWithParam<WalkRow> {};

TEST_P(WalkTest, FatesFollowFromTheCallsAlone) {
    unsigned char level = 0;
    WalkTrace walks(level);
    const std::vector<WalkTrace::Id> ids{walks.Register("key", "Down", "echo", 1, 0),
                                         walks.Register("key", "Down", "game", 0, 0),
                                         walks.Register("key", "Down", "menu", 10, 1)};
    walks.Register("key", "W", "echo", 1, 0); // another key's reactor takes no part
    for (const WalkCall& call : GetParam().calls) {
        level = call.level;
        walks.Called(ids[call.reactor], "press", call.consumed);
    }
    level = GetParam().levelAfter;
    const auto walk = walks.LastWalk();
    ASSERT_TRUE(walk);
    EXPECT_EQ(walk->event, "key press Down");
    std::vector<Fate> fates;
    for (const WalkStep& step : walk->steps)
        fates.push_back(step.fate);
    EXPECT_EQ(fates, GetParam().fates);
    EXPECT_EQ(walk->stopped, GetParam().stopped);
    EXPECT_EQ(walks.Held(), std::vector<std::string>{"key Down"});
}

const WalkRow walkRows[] = {
    {"GameConsumesSoTheWalkStops",
     {{1, 0, true}},
     0,
     {Fate::Consumed, Fate::NotReached, Fate::OtherLevel},
     true},
    {"NobodyConsumesAtLevelZero",
     {{1, 0, false}, {0, 0, false}},
     0,
     {Fate::PassedOn, Fate::PassedOn, Fate::OtherLevel},
     false},
    {"MenuLevelPassesOverTheGame",
     {{2, 1, true}},
     1,
     {Fate::OtherLevel, Fate::OtherLevel, Fate::Consumed},
     false},
    // The game's reactor opens the menu: the echo layer is passed over at the new level, and the
    // menu's reactor, at that level, is where the consumer's walk stops.
    {"ConsumerEntersALevelMidWalk",
     {{1, 0, true}},
     1,
     {Fate::Consumed, Fate::OtherLevel, Fate::NotReached},
     true},
    // The same reactor called again, or an earlier one, is the next event's walk.
    {"ARepeatedCallStartsANewWalk",
     {{1, 0, true}, {1, 0, false}},
     0,
     {Fate::PassedOn, Fate::NotReached, Fate::OtherLevel},
     false},
};

INSTANTIATE_TEST_SUITE_P(WalkTrace, WalkTest, testing::ValuesIn(walkRows),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace InputLab
