#include "InputScript.h"

#include <gtest/gtest.h>

#include <sstream>

namespace InputLab {
namespace {

using Kind = ScriptEvent::Kind;

InputScript ParseText(const std::string& text) {
    std::istringstream input(text);
    return InputScript::Parse(input, "tour.txt");
}

// --- lines that are understood ---

struct GoodLine {
    const char* name;
    const char* line;
    Kind kind;
    SDL_Keycode key;
    int x;
    int y;
    std::uint8_t button;
    const char* text;
};

const GoodLine goodLines[] = {
    {"KeyDownLetter", "key down a", Kind::KeyDown, SDLK_a, 0, 0, 0, ""},
    {"KeyUpDigit", "key up 2", Kind::KeyUp, SDLK_2, 0, 0, 0, ""},
    {"KeyNameWithBlank", "key down Left Shift", Kind::KeyDown, SDLK_LSHIFT, 0, 0, 0, ""},
    {"KeyNameAnyCase", "key down escape", Kind::KeyDown, SDLK_ESCAPE, 0, 0, 0, ""},
    {"KeyFunction", "key up F2", Kind::KeyUp, SDLK_F2, 0, 0, 0, ""},
    {"Motion", "motion 100 200", Kind::Motion, SDLK_UNKNOWN, 100, 200, 0, ""},
    {"MotionNegative", "motion -5 7", Kind::Motion, SDLK_UNKNOWN, -5, 7, 0, ""},
    {"ButtonLeft", "button down left", Kind::ButtonDown, SDLK_UNKNOWN, 0, 0, SDL_BUTTON_LEFT, ""},
    {"ButtonMiddle", "button up middle", Kind::ButtonUp, SDLK_UNKNOWN, 0, 0, SDL_BUTTON_MIDDLE, ""},
    {"WheelDown", "wheel -2", Kind::Wheel, SDLK_UNKNOWN, 0, -2, 0, ""},
    {"TextAccent", "text é", Kind::Text, SDLK_UNKNOWN, 0, 0, 0, "é"},
    {"TextKeepsBlanks", "text a b ", Kind::Text, SDLK_UNKNOWN, 0, 0, 0, "a b "},
    {"WindowClose", "window close", Kind::WindowClose, SDLK_UNKNOWN, 0, 0, 0, ""},
    {"WindowMinimize", "window minimize", Kind::WindowMinimize, SDLK_UNKNOWN, 0, 0, 0, ""},
    {"LeadingBlanks", "   motion 1 2", Kind::Motion, SDLK_UNKNOWN, 1, 2, 0, ""},
};

class GoodLineTest : public testing::TestWithParam<GoodLine> {};

TEST_P(GoodLineTest, GivesOneEvent) {
    const GoodLine& row = GetParam();
    const InputScript script = ParseText(row.line);
    ASSERT_EQ(script.Entries().size(), 1U);
    const ScriptEntry& entry = script.Entries().front();
    EXPECT_EQ(entry.frame, 0U);
    EXPECT_EQ(entry.line, 1U);
    EXPECT_EQ(entry.event.kind, row.kind);
    EXPECT_EQ(entry.event.key, row.key);
    EXPECT_EQ(entry.event.x, row.x);
    EXPECT_EQ(entry.event.y, row.y);
    EXPECT_EQ(entry.event.button, row.button);
    EXPECT_EQ(entry.event.text, row.text);
}

INSTANTIATE_TEST_SUITE_P(InputScript, GoodLineTest, testing::ValuesIn(goodLines),
                         [](const auto& info) { return std::string(info.param.name); });

// --- lines that are not: one message with the file, the line and the problem ---

struct BadLine {
    const char* name;
    const char* script;
    const char* message;
};

const BadLine badLines[] = {
    {"UnknownVerb", "jump", "Input script \"tour.txt\", line 1: unknown event \"jump\""},
    {"UnknownKey", "key down nokey",
     "Input script \"tour.txt\", line 1: unknown key name \"nokey\""},
    {"KeyWithoutName", "key down", "line 1: key needs a key name"},
    {"KeyWithoutDirection", "key sideways a", "line 1: key needs \"down\" or \"up\""},
    {"MotionMissingY", "motion 5", "line 1: expected a y coordinate, found \"\""},
    {"MotionNotNumber", "motion x 5", "line 1: expected an x coordinate, found \"x\""},
    {"MotionTrailing", "motion 1 2 3", "line 1: unexpected \"3\" at the end"},
    {"UnknownButton", "button down side", "line 1: unknown button \"side\""},
    {"WheelZero", "wheel 0", "line 1: wheel needs a number of steps other than 0"},
    {"TextEmpty", "text", "line 1: text needs at least one character"},
    {"TextTooLong", "text 0123456789012345678901234567890123", "line 1: text is longer than 31"},
    {"WindowUnknown", "window explode", "line 1: unknown window event \"explode\""},
    {"WaitNegative", "wait -1", "line 1: wait needs 0 or more frames"},
    {"CountsSkippedLines", "# tour\n\nkey down a\nwait x", "line 4: expected a number"},
};

class BadLineTest : public testing::TestWithParam<BadLine> {};

TEST_P(BadLineTest, NamesFileLineAndProblem) {
    const BadLine& row = GetParam();
    try {
        ParseText(row.script);
        FAIL() << "no error for: " << row.script;
    } catch (const ScriptError& error) {
        EXPECT_NE(std::string(error.what()).find(row.message), std::string::npos) << error.what();
    }
}

INSTANTIATE_TEST_SUITE_P(InputScript, BadLineTest, testing::ValuesIn(badLines),
                         [](const auto& info) { return std::string(info.param.name); });

// --- timing and injection ---

TEST(InputScriptTest, WaitsMoveLaterLinesToLaterFrames) {
    const InputScript script = ParseText("key down a\nwait 3\nkey up a\nwait 0\nwait 2\nwheel 1");
    ASSERT_EQ(script.Entries().size(), 3U);
    EXPECT_EQ(script.Entries()[0].frame, 0U);
    EXPECT_EQ(script.Entries()[1].frame, 3U);
    EXPECT_EQ(script.Entries()[2].frame, 5U);
    EXPECT_EQ(script.Entries()[2].line, 6U);
    EXPECT_EQ(script.Length(), 6U);
}

TEST(InputScriptTest, CommentsBlankLinesAndCarriageReturnsAreSkipped) {
    const InputScript script = ParseText("# a comment\r\n\r\n  \nkey down a\r\n");
    ASSERT_EQ(script.Entries().size(), 1U);
    EXPECT_EQ(script.Entries()[0].line, 4U);
}

TEST(InputScriptTest, MissingFileIsOneMessage) {
    try {
        InputScript::Load("/nonexistent/inputlab/script.txt");
        FAIL();
    } catch (const ScriptError& error) {
        EXPECT_STREQ(error.what(), "Cannot read input script \"/nonexistent/inputlab/script.txt\"");
    }
}

TEST(InputScriptTest, KeyEventsCarryKeycodeAndScancode) {
    // Scancodes come from the keymap, which SDL sets up with its video subsystem, as in the lab.
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    ScriptEvent press;
    press.kind = Kind::KeyDown;
    press.key = SDLK_a;
    const SDL_Event event = InputScript::ToSdlEvent(press, 0, 0);
    EXPECT_EQ(event.type, SDL_KEYDOWN);
    EXPECT_EQ(event.key.keysym.sym, SDLK_a);
    EXPECT_EQ(event.key.keysym.scancode, SDL_SCANCODE_A);
    EXPECT_EQ(event.key.state, SDL_PRESSED);
    EXPECT_EQ(event.key.repeat, 0);
    SDL_Quit();
}

TEST(InputScriptTest, ButtonsHappenWhereTheCursorIs) {
    ScriptEvent click;
    click.kind = Kind::ButtonUp;
    click.button = SDL_BUTTON_RIGHT;
    const SDL_Event event = InputScript::ToSdlEvent(click, 30, 40);
    EXPECT_EQ(event.type, SDL_MOUSEBUTTONUP);
    EXPECT_EQ(event.button.button, SDL_BUTTON_RIGHT);
    EXPECT_EQ(event.button.x, 30);
    EXPECT_EQ(event.button.y, 40);
    EXPECT_EQ(event.button.state, SDL_RELEASED);
}

TEST(InputScriptTest, TextAndWindowEvents) {
    ScriptEvent text;
    text.kind = Kind::Text;
    text.text = "\xC3\xA9";
    const SDL_Event typed = InputScript::ToSdlEvent(text, 0, 0);
    EXPECT_EQ(typed.type, SDL_TEXTINPUT);
    EXPECT_STREQ(typed.text.text, "\xC3\xA9");

    ScriptEvent close;
    close.kind = Kind::WindowClose;
    const SDL_Event closing = InputScript::ToSdlEvent(close, 0, 0);
    EXPECT_EQ(closing.type, SDL_WINDOWEVENT);
    EXPECT_EQ(closing.window.event, SDL_WINDOWEVENT_CLOSE);
}

TEST(InputScriptTest, InjectsEachEventOnceInItsFrame) {
    ASSERT_EQ(SDL_Init(SDL_INIT_EVENTS), 0) << SDL_GetError();
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    InputScript script = ParseText("motion 5 6\nbutton down left\nwait 2\nwheel 1");
    const auto waiting = [] {
        SDL_PumpEvents();
        return SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
    };
    script.InjectDue(0);
    EXPECT_EQ(waiting(), 2);
    script.InjectDue(1);
    EXPECT_EQ(waiting(), 2);
    script.InjectDue(2);
    EXPECT_EQ(waiting(), 3);
    script.InjectDue(3);
    EXPECT_EQ(waiting(), 3);

    SDL_Event event;
    ASSERT_EQ(SDL_PollEvent(&event), 1);
    EXPECT_EQ(event.type, SDL_MOUSEMOTION);
    ASSERT_EQ(SDL_PollEvent(&event), 1);
    EXPECT_EQ(event.type, SDL_MOUSEBUTTONDOWN);
    EXPECT_EQ(event.button.x, 5); // the position of the motion before it
    EXPECT_EQ(event.button.y, 6);
    SDL_Quit();
}

} // namespace
} // namespace InputLab
