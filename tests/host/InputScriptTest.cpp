// SPDX-License-Identifier: Zlib
// The input script: each line understood or refused with its message, events pushed into SDL's
// queue in their frames, and a recording that reads back as the script it came from.
#include "HostTest.h"

#include <host/InputRecorder.h>
#include <host/InputScript.h>

#include <SDL.h>

#include <limits>
#include <sstream>
#include <string>
#include <tuple>

namespace {

using namespace HostTests;
using namespace std::string_literals; // for rows that hold a NUL
using Host::InputScript;
using Host::ScriptEntry;
using Host::ScriptEvent;
using Kind = ScriptEvent::Kind;

InputScript ParseText(const std::string& text) {
    std::istringstream input(text);
    return InputScript::Parse(input, "tour.txt");
}

// --- lines ---

struct GoodLine {
    const char* name;
    const char* line;
    ScriptEvent expected;
};

// GoogleTest prints every row when it registers the cases; by default it dumps the bytes,
// padding included, which a memory checker reports as uninitialised reads.
void PrintTo(const GoodLine& row, std::ostream* out) {
    *out << row.name;
}

class GoodLineTest : public testing::TestWithParam<GoodLine> {};

TEST_P(GoodLineTest, GivesOneEvent) {
    const InputScript script = ParseText(GetParam().line);
    ASSERT_EQ(script.Entries().size(), 1U);
    const ScriptEvent& event = script.Entries().front().event;
    const ScriptEvent& expected = GetParam().expected;
    EXPECT_EQ(event.kind, expected.kind);
    EXPECT_EQ(event.key, expected.key);
    EXPECT_EQ(event.x, expected.x);
    EXPECT_EQ(event.y, expected.y);
    EXPECT_EQ(event.button, expected.button);
    EXPECT_EQ(event.text, expected.text);
}

const GoodLine goodLines[] = {
    {"KeyDownLetter", "key down a", {Kind::KeyDown, SDLK_a, 0, 0, 0, ""}},
    {"KeyNameWithBlank", "key up Left Shift", {Kind::KeyUp, SDLK_LSHIFT, 0, 0, 0, ""}},
    {"KeyNameAnyCaseAfterBlanks", "  key down escape", {Kind::KeyDown, SDLK_ESCAPE, 0, 0, 0, ""}},
    {"Motion", "motion -5 7", {Kind::Motion, SDLK_UNKNOWN, -5, 7, 0, ""}},
    {"ButtonLeft", "button down left", {Kind::ButtonDown, SDLK_UNKNOWN, 0, 0, SDL_BUTTON_LEFT, ""}},
    {"ButtonUp", "button up middle", {Kind::ButtonUp, SDLK_UNKNOWN, 0, 0, SDL_BUTTON_MIDDLE, ""}},
    {"MotionAtSint32Ends",
     "motion -2147483648 2147483647",
     {Kind::Motion, SDLK_UNKNOWN, -2147483647 - 1, 2147483647, 0, ""}},
    {"MotionCrlf", "motion 20 30\r\n", {Kind::Motion, SDLK_UNKNOWN, 20, 30, 0, ""}},
    {"Wheel", "wheel -2", {Kind::Wheel, SDLK_UNKNOWN, 0, -2, 0, ""}},
    {"TextKeepsBlanks", "text é b ", {Kind::Text, SDLK_UNKNOWN, 0, 0, 0, "é b "}},
    {"TextCrlfLongest",
     "text ééééééééééééééé.\r",
     {Kind::Text, SDLK_UNKNOWN, 0, 0, 0, "ééééééééééééééé."}},
    {"WindowClose", "window close", {Kind::WindowClose, SDLK_UNKNOWN, 0, 0, 0, ""}},
    {"WindowMinimize", "window minimize", {Kind::WindowMinimize, SDLK_UNKNOWN, 0, 0, 0, ""}},
};

INSTANTIATE_TEST_SUITE_P(InputScript, GoodLineTest, testing::ValuesIn(goodLines),
                         [](const auto& info) { return std::string(info.param.name); });

struct BadLine {
    const char* name;
    std::string script;
    std::string message; // after "Input script \"tour.txt\", line "
};

void PrintTo(const BadLine& row, std::ostream* out) {
    *out << row.name;
}

class BadLineTest : public testing::TestWithParam<BadLine> {};

TEST_P(BadLineTest, NamesFileLineAndProblem) {
    // Caught by its type: the lab tells a bad script from other failures by it.
    EXPECT_THROW(ParseText(GetParam().script), Host::InputScriptError);
    EXPECT_THAT(Outcome([] { ParseText(GetParam().script); }),
                testing::HasSubstr("Input script \"tour.txt\", line " + GetParam().message));
}

const BadLine badLines[] = {
    {"UnknownVerb", "jump", "1: unknown event \"jump\""},
    {"UnknownKey", "key down nokey", "1: unknown key name \"nokey\""},
    {"KeyWithoutName", "key down", "1: key needs a key name"},
    {"KeyWithoutDirection", "key sideways a", "1: key needs \"down\" or \"up\""},
    {"MotionMissingY", "motion 5",
     "1: expected a y coordinate from -2147483648 to 2147483647, found \"\""},
    {"MotionBeyondInt", "motion 1099511627776 5",
     "1: expected an x coordinate from -2147483648 to 2147483647, found \"1099511627776\""},
    {"MotionWouldWrap", "motion 4294967396 0",
     "1: expected an x coordinate from -2147483648 to 2147483647, found \"4294967396\""},
    {"MotionTrailing", "motion 1 2 3", "1: unexpected \"3\" at the end"},
    {"UnknownButton", "button down side", "1: unknown button \"side\" (left, right or middle)"},
    {"WheelZero", "wheel 0", "1: wheel needs a number of steps other than 0"},
    {"WheelWouldBeOne", "wheel 4294967297",
     "1: expected a number of steps from -2147483648 to 2147483647, found \"4294967297\""},
    {"WheelWouldBeZero", "wheel 4294967296",
     "1: expected a number of steps from -2147483648 to 2147483647, found \"4294967296\""},
    {"TextEmpty", "text", "1: text needs at least one character"},
    {"TextTooLong", "text 0123456789012345678901234567890123", "1: text is longer than 31"},
    {"TextNotUtf8", "text a\xff", "1: text is not valid UTF-8: \"a\\xff\""},
    {"TextOverlong", "text \xc0\xaf", "1: text is not valid UTF-8: \"\\xc0\\xaf\""},
    {"TextNul", "text a\0b"s, "1: NUL byte in the line"},
    {"KeyNameNul", "key down a\0"s, "1: NUL byte in the line"},
    {"BinaryEscaped", "\x1b[31m\xfe" + std::string(50, 'x'),
     "1: unknown event \"\\x1b[31m\\xfe" + std::string(28, 'x') +
         "...\" (key, motion, button, wheel, text, window, wait)"},
    {"WindowUnknown", "window explode",
     "1: unknown window event \"explode\" (close, minimize or maximize)"},
    {"WaitNegative", "wait -1", "1: expected a number of frames from 0 to 18446744073709551614"},
    {"WaitsBeyondTheCounter", "wait 9223372036854775807\nwait 9223372036854775807\nwait 1",
     "3: wait takes the script beyond frame 18446744073709551614"},
    {"CountsSkippedLines", "# tour\r\n\n  \nkey down a\nwait x", "5: expected a number"},
};

INSTANTIATE_TEST_SUITE_P(InputScript, BadLineTest, testing::ValuesIn(badLines),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(InputScriptTest, WaitsMoveLaterLinesToLaterFrames) {
    const InputScript script =
        ParseText("key down a\r\nwait 3\r\n# x\r\nkey up a\nwait 0\nwait 2\r\nwheel 1");
    ASSERT_EQ(script.Entries().size(), 3U);
    EXPECT_EQ(script.Entries()[0].frame, 0U);
    EXPECT_EQ(script.Entries()[1].frame, 3U);
    EXPECT_EQ(script.Entries()[2].frame, 5U);
    EXPECT_EQ(script.Entries()[2].line, 7U);
    EXPECT_EQ(script.Length(), 6U);
}

TEST(InputScriptTest, MissingFileIsOneMessage) {
    EXPECT_THROW(InputScript::Load("/nonexistent/scripts/x.txt"), Host::InputScriptError);
    EXPECT_EQ(Outcome([] { InputScript::Load("/nonexistent/scripts/x.txt"); }),
              "Cannot read input script \"/nonexistent/scripts/x.txt\"");
}

// --- SDL's queue ---

/// SDL's video subsystem on the dummy driver, with an empty queue: scancodes come from the
/// keymap, which SDL sets up with its video subsystem, as in an engine.
class InjectionTest : public testing::Test {
protected:
    void SetUp() override {
        SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }
    void TearDown() override { SDL_Quit(); }

    static int Waiting() {
        SDL_PumpEvents();
        return SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
    }
};

TEST_F(InjectionTest, InjectsEachEventOnceInItsFrame) {
    InputScript script = ParseText("motion 5 6\nbutton down left\nwait 2\nkey down a");
    script.InjectDue(0);
    EXPECT_EQ(Waiting(), 2);
    script.InjectDue(1);
    EXPECT_EQ(Waiting(), 2);
    script.InjectDue(2);
    script.InjectDue(3);
    EXPECT_EQ(Waiting(), 3);

    SDL_Event event;
    ASSERT_EQ(SDL_PollEvent(&event), 1);
    EXPECT_EQ(event.type, SDL_MOUSEMOTION);
    ASSERT_EQ(SDL_PollEvent(&event), 1);
    EXPECT_EQ(event.type, SDL_MOUSEBUTTONDOWN);
    EXPECT_EQ(event.button.x, 5); // the position of the motion before it
    EXPECT_EQ(event.button.y, 6);
    ASSERT_EQ(SDL_PollEvent(&event), 1);
    EXPECT_EQ(event.type, SDL_KEYDOWN);
    EXPECT_EQ(event.key.keysym.scancode, SDL_SCANCODE_A);

    // A move from one end of the field to the other is more than it holds: held at its end.
    constexpr int most = std::numeric_limits<int>::max();
    const ScriptEvent across{Kind::Motion, SDLK_UNKNOWN, most, 0, 0, ""};
    EXPECT_EQ(InputScript::ToSdlEvent(across, -most - 1, 0).motion.xrel, most);
}

TEST_F(InjectionTest, TheSystemsInputWaitsUntilTheLastLineIsPushed) {
    InputScript script = ParseText("key down a\nwait 2\nkey up a");
    // What SDL's filter sees of the window system's input: SDL_PushEvent passes it the same way.
    const auto systemSends = [](SDL_Event event) { return SDL_PushEvent(&event) == 1; };
    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    SDL_Event close{};
    close.type = SDL_WINDOWEVENT;
    close.window.event = SDL_WINDOWEVENT_CLOSE;

    script.InjectDue(0);
    EXPECT_FALSE(systemSends(motion));
    EXPECT_TRUE(systemSends(close)); // window events still arrive
    script.InjectDue(1);
    EXPECT_FALSE(systemSends(motion));
    EXPECT_EQ(Waiting(), 2);
    script.InjectDue(2); // the last line: real input comes again from the next poll
    EXPECT_TRUE(systemSends(motion));
    EXPECT_EQ(Waiting(), 4);
}

TEST_F(InjectionTest, ARecordingReplaysAsTheScriptItCameFrom) {
    InputScript script = ParseText("motion 5 -6\nbutton down left\nwait 2\nkey down Left Shift\n"
                                   "key down F2\ntext  é x\nwheel -2\nbutton up middle\n"
                                   "button down right\nwait 1\nwindow close\nwindow minimize\n"
                                   "window maximize\n");
    const std::string path = testing::TempDir() + "host_input_recording.txt";
    {
        Host::InputRecorder recorder(path);
        for (unsigned long long frame = 0; frame < 4; ++frame) {
            recorder.Polling(frame);
            script.InjectDue(frame);
            if (frame == 2) { // the system's repeats are not input of their own
                SDL_Event repeat = InputScript::ToSdlEvent(script.Entries()[2].event, 0, 0);
                repeat.key.repeat = 1;
                SDL_PushEvent(&repeat);
            }
            SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT); // the library's poll
            recorder.Polled();
        }
    }
    const InputScript replayed = InputScript::Load(path);
    fs::remove(path);
    const auto fields = [](const ScriptEntry& entry) {
        const ScriptEvent& event = entry.event;
        return std::make_tuple(entry.frame, event.kind, event.key, event.x, event.y, event.button,
                               event.text);
    };
    ASSERT_EQ(replayed.Entries().size(), script.Entries().size());
    for (std::size_t index = 0; index < script.Entries().size(); ++index)
        EXPECT_EQ(fields(replayed.Entries()[index]), fields(script.Entries()[index]))
            << "line " << script.Entries()[index].line;
}

} // namespace
