#include "EventEcho.h"

#include <gtest/gtest.h>

#include <sstream>

namespace InputLab {
namespace {

using Window::Mode;

TEST(EventEchoTest, NumbersCallbacksButNotNotes) {
    std::ostringstream out;
    EventEcho echo(out);
    echo.Callback("first");
    echo.Note("between");
    echo.Callback("second");
    EXPECT_EQ(out.str(), "#1 first\n-- between\n#2 second\n");
    EXPECT_EQ(echo.Count(), 2U);
}

TEST(EventEchoTest, HoldsPrintTheFirstAndEveryPeriodth) {
    std::ostringstream out;
    EventEcho echo(out);
    for (unsigned long long tick = 0; tick < 2 * EventEcho::HoldEchoPeriod; ++tick)
        echo.Hold("key W", "key hold W");
    EXPECT_EQ(out.str(), "#1 key hold W x1\n#2 key hold W x60\n#3 key hold W x120\n");

    // A new press starts the count again; another subject counts on its own.
    echo.EndHold("key W");
    echo.Hold("key W", "key hold W");
    echo.Hold("mode LeftShift", "mode hold LeftShift");
    EXPECT_EQ(echo.Count(), 5U);
}

struct Formatted {
    const char* name;
    std::string text;
    const char* expected;
};

class FormatTest : public testing::TestWithParam<Formatted> {};

TEST_P(FormatTest, ReadsLikeTheLibrarysNames) {
    EXPECT_EQ(GetParam().text, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    EventEcho, FormatTest,
    testing::Values(
        Formatted{"KeyWithModes",
                  EventEcho::KeyText("press", Window::Key::A, 0, 0, {Mode::LeftShift}),
                  "key press A (priority 0, level 0) modes {LeftShift}"},
        Formatted{"ModesInCodeOrder",
                  EventEcho::KeyText("release", Window::Key::Digit2, 1, 3,
                                     {Mode::RightCtrl, Mode::LeftShift, Mode::LeftAlt}),
                  "key release Digit2 (priority 1, level 3) modes {LeftShift, LeftAlt, "
                  "RightCtrl}"},
        Formatted{"Mode", EventEcho::ModeText("hold", Mode::RightAlt, 1),
                  "mode hold RightAlt (level 1)"},
        Formatted{"Button", EventEcho::ButtonText("press", Window::Button::WheelUp, 0, 1, {}),
                  "button press WheelUp (priority 0) number 1 modes {}"},
        Formatted{"Cursor", EventEcho::CursorText(-3, 700, 2, {}),
                  "cursor -3,700 (priority 2) modes {}"},
        Formatted{"TextAccent", EventEcho::TextText(L"\u00e9", 0),
                  "text \"\xC3\xA9\" U+00E9 (level 0)"},
        Formatted{"TextBeyondTheBasicPlane", EventEcho::TextText(L"a\U0001F600", 0),
                  "text \"a\xF0\x9F\x98\x80\" U+0061 U+1F600 (level 0)"},
        Formatted{"Window", EventEcho::WindowText(Window::WindowEvent::Close), "window Close"}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace InputLab
