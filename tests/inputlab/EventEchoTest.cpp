// SPDX-License-Identifier: Zlib
// The lab's echo: numbered callback lines, counted holds, and names as the library spells them.
#include "EventEcho.h"

#include <gtest/gtest.h>

#include <sstream>

namespace InputLab {
namespace {

using Window::Mode;

TEST(EventEchoTest, NumbersCallbacksAndHoldsButNotNotes) {
    std::ostringstream out;
    EventEcho echo(out);
    echo.Callback("first");
    echo.Note("between\x1b");
    for (unsigned long long tick = 0; tick < 2 * EventEcho::HoldEchoPeriod; ++tick)
        echo.Hold("key W", "key hold W"); // the first of a hold and every period-th after it
    EXPECT_EQ(out.str(), "#1 first\n-- between\\x1b\n#2 key hold W x1\n#3 key hold W x60\n"
                         "#4 key hold W x120\n");

    // A new press starts the count again; another subject counts on its own.
    echo.EndHold("key W");
    echo.Hold("key W", "key hold W");
    echo.Hold("mode LeftShift", "mode hold LeftShift");
    EXPECT_EQ(echo.Count(), 6U);
}

TEST(EventEchoTest, OneLinePerKindReadsLikeTheLibrarysNames) {
    EXPECT_EQ(EventEcho::KeyText("release", Window::Key::Digit2, 1, 3,
                                 {Mode::RightCtrl, Mode::LeftShift, Mode::LeftAlt}),
              "key release Digit2 (priority 1, level 3) modes {LeftShift, LeftAlt, RightCtrl}");
    EXPECT_EQ(EventEcho::ModeText("hold", Mode::RightAlt, 1), "mode hold RightAlt (level 1)");
    EXPECT_EQ(EventEcho::ButtonText("press", Window::Button::WheelUp, 0, 1, {}),
              "button press WheelUp (priority 0) number 1 modes {}");
    EXPECT_EQ(EventEcho::CursorText(-3, 700, 2, {}), "cursor -3,700 (priority 2) modes {}");
    EXPECT_EQ(EventEcho::TextText(L"\u00e9\U0001F600", 0), // beyond the basic plane too
              "text \"\xC3\xA9\xF0\x9F\x98\x80\" U+00E9 U+1F600 (level 0)");
    EXPECT_EQ(EventEcho::TextText(L"\x1b[J", 1), "text \"\\x1b[J\" U+001B U+005B U+004A (level 1)");
    EXPECT_EQ(EventEcho::WindowText(Window::WindowEvent::Close), "window Close");
}

} // namespace
} // namespace InputLab
