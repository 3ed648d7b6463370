// SPDX-License-Identifier: Zlib
// Unit tests of the input lab's parts that need no display. The end-to-end test drives the real
// program; these catch faults in the parts it is built from.

#include "CommandLine.h"
#include "EventEcho.h"
#include "InputScript.h"
#include "LabConfiguration.h"
#include "PngFile.h"
#include "PrintableText.h"
#include "Scene.h"
#include "WalkTrace.h"

#include <host/InputRecorder.h>
#include <window/Version.h>

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace InputLab {
namespace {

using namespace std::string_literals; // for rows that hold a NUL

// GoogleTest prints every row when it registers the cases; by default it dumps the bytes,
// padding included, which a memory checker reports as uninitialised reads. Rows print as their
// name (each table below names its row type here).
template <class Row> void PrintName(const Row& row, std::ostream* out) {
    *out << row.name;
}

/// The message of the `Error` that `action` throws, or "(no error)".
template <typename Error, typename Action> std::string MessageOf(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error.what();
    }
    return "(no error)";
}

// --- command line ---

LabOptions Parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "inputlab");
    return ParseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

TEST(CommandLineTest, DefaultsRunUntilClosedWithTheXdgConfig) {
    EXPECT_EQ(DefaultConfigPath("/x", "/home/u"), "/x/inputlab/config.toml");
    EXPECT_EQ(DefaultConfigPath("", "/home/u"), "/home/u/.config/inputlab/config.toml");
    EXPECT_EQ(DefaultConfigPath(nullptr, nullptr), "inputlab/config.toml");
    EXPECT_EQ(DefaultConfigPath(L"C:\\Users\\u\\AppData\\Roaming"),
              std::filesystem::path(L"C:\\Users\\u\\AppData\\Roaming/inputlab/config.toml"));
    EXPECT_EQ(DefaultConfigPath(L""), "inputlab/config.toml");
    const LabOptions options = Parse({});
    EXPECT_FALSE(options.help || options.frames || options.screenshot || options.script ||
                 options.logFile);
    EXPECT_EQ(options.configPath.filename(), "config.toml");
#if defined(_WIN32)
    EXPECT_EQ(options.configPath.parent_path().parent_path(), _wgetenv(L"APPDATA"));
#endif
}

TEST(CommandLineTest, EveryOptionIsTakenAndDescribed) {
    const LabOptions options = Parse({"--config", "c.toml", "--frames=12", "--screenshot", "s.png",
                                      "--script", "in.txt", "--log", "lab.log"});
    EXPECT_EQ(options.configPath, "c.toml");
    EXPECT_EQ(options.frames, 12U);
    EXPECT_EQ(options.screenshot, std::filesystem::path("s.png"));
    EXPECT_EQ(options.script, std::filesystem::path("in.txt"));
    EXPECT_EQ(options.logFile, std::filesystem::path("lab.log"));
    EXPECT_EQ(Parse({"--frames", "18446744073709551615"}).frames, ~0ULL);

    const LabOptions help = Parse({"--help"});
    ASSERT_TRUE(help.help);
    for (const char* option : {"--config", "--log", "--frames", "--screenshot", "--script",
                               "--version", "share/doc/window", "inputlab/README.md"})
        EXPECT_NE(help.helpText.find(option), std::string::npos) << option;

    const LabOptions version = Parse({"--version"});
    ASSERT_TRUE(version.help);
    EXPECT_EQ(version.helpText,
              std::string("inputlab, window library ") + WINDOW_VERSION_STRING + "\n");
}

struct BadCommandLine {
    const char* name;
    std::vector<const char*> arguments;
    const char* message;
};

void PrintTo(const BadCommandLine& row, std::ostream* out) {
    PrintName(row, out);
}

class BadCommandLineTest : public testing::TestWithParam<BadCommandLine> {};

TEST_P(BadCommandLineTest, GivesOneMessageNamingTheProblem) {
    const std::string message = MessageOf<CommandLineError>([] { Parse(GetParam().arguments); });
    EXPECT_NE(message.find(GetParam().message), std::string::npos) << message;
}

const BadCommandLine badCommandLines[] = {
    {"UnknownOption", {"--fullscreen"}, "unrecognised option \"--fullscreen\""},
    {"MissingValue", {"--frames"}, "--frames"},
    {"FramesZero", {"--frames", "0"}, "frames from 1 to 18446744073709551615, not \"0\""},
    {"FramesNegative", {"--frames", "-3"}, "not \"-3\""},
    {"FramesHuge", {"--frames", "18446744073709551616"}, "to 18446744073709551615, not \"1844"},
    {"FramesTrailing", {"--frames", "5x"}, "not \"5x\""},
    {"StrayWordEscaped", {"\x1b[2J"}, "unexpected argument \"\\x1b[2J\""},
    {"TwiceTheSame", {"--config", "a", "--config", "b"}, "config"},
};

INSTANTIATE_TEST_SUITE_P(CommandLine, BadCommandLineTest, testing::ValuesIn(badCommandLines),
                         [](const auto& info) { return std::string(info.param.name); });

// --- input script ---

using Kind = ScriptEvent::Kind;

InputScript ParseText(const std::string& text) {
    std::istringstream input(text);
    return InputScript::Parse(input, "tour.txt");
}

struct GoodLine {
    const char* name;
    const char* line;
    ScriptEvent expected;
};

void PrintTo(const GoodLine& row, std::ostream* out) {
    PrintName(row, out);
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
    PrintName(row, out);
}

class BadLineTest : public testing::TestWithParam<BadLine> {};

TEST_P(BadLineTest, NamesFileLineAndProblem) {
    const std::string message = MessageOf<ScriptError>([] { ParseText(GetParam().script); });
    const std::string expected = "Input script \"tour.txt\", line " + GetParam().message;
    EXPECT_NE(message.find(expected), std::string::npos) << message;
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
    {"UnknownButton", "button down side", "1: unknown button \"side\""},
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
     "1: unknown event \"\\x1b[31m\\xfe" + std::string(28, 'x') + "...\""},
    {"WindowUnknown", "window explode", "1: unknown window event \"explode\""},
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
    EXPECT_EQ(MessageOf<ScriptError>([] { InputScript::Load("/nonexistent/inputlab/x.txt"); }),
              "Cannot read input script \"/nonexistent/inputlab/x.txt\"");
}

TEST(InputScriptTest, InjectsEachEventOnceInItsFrame) {
    // Scancodes come from the keymap, which SDL sets up with its video subsystem, as in the lab.
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    InputScript script = ParseText("motion 5 6\nbutton down left\nwait 2\nkey down a");
    const auto waiting = [] {
        SDL_PumpEvents();
        return SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
    };
    script.InjectDue(0);
    EXPECT_EQ(waiting(), 2);
    script.InjectDue(1);
    EXPECT_EQ(waiting(), 2);
    script.InjectDue(2);
    script.InjectDue(3);
    EXPECT_EQ(waiting(), 3);

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
    SDL_Quit();

    // A move from one end of the field to the other is more than it holds: held at its end.
    constexpr int most = std::numeric_limits<int>::max();
    const ScriptEvent across{Kind::Motion, SDLK_UNKNOWN, most, 0, 0, ""};
    EXPECT_EQ(InputScript::ToSdlEvent(across, -most - 1, 0).motion.xrel, most);
}

TEST(InputScriptTest, ARecordingReplaysAsTheScriptItCameFrom) {
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    InputScript script = ParseText("motion 5 -6\nbutton down left\nwait 2\nkey down Left Shift\n"
                                   "key down F2\ntext  é x\nwheel -2\nbutton up middle\nwait 1\n"
                                   "window close\nwindow maximize\n");
    const std::string path = testing::TempDir() + "inputlab_recording.txt";
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
    SDL_Quit();
    const InputScript replayed = InputScript::Load(path);
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

// --- configuration ---

/// A folder of its own for each test, gone at its end.
class ConfigurationTest : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(folder); }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::filesystem::path Write(const std::string& text) {
        std::ofstream(folder / "config.toml") << text;
        return folder / "config.toml";
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("inputlab_config_" + std::to_string(::getpid()));
};

TEST_F(ConfigurationTest, ValuesAreReadAsTheLibraryReadsThem) {
    // A missing file that was not named gives the defaults, and is not created.
    EXPECT_EQ(LoadConfiguration(folder / "first.toml", false).tickPeriod, 16666U);
    EXPECT_FALSE(std::filesystem::exists(folder / "first.toml"));
    // Only above 0 is full screen; a rate beyond a tick per microsecond gives the fastest ticker,
    // one of 0 or below the default.
    const LabSettings odd =
        LoadConfiguration(Write("Window.FullScreen = -1\nWindow.Resolution = '{ -1 ,, 700 }'\n"
                                "Window.Input.PollRate = 2000000\n"),
                          true);
    EXPECT_FALSE(odd.fullScreen);
    EXPECT_EQ(odd.tickPeriod, 1U);
    const LabSettings usual =
        LoadConfiguration(Write("Window.FullScreen = 2\nWindow.Input.PollRate = 0\n"), true);
    EXPECT_TRUE(usual.fullScreen);
    EXPECT_EQ(usual.tickPeriod, 16666U);
}

struct BadConfiguration {
    const char* name;
    const char* text; // "/": a folder in its place
    const char* message;
};

void PrintTo(const BadConfiguration& row, std::ostream* out) {
    PrintName(row, out);
}

class BadConfigurationTest : public ConfigurationTest,
                             public testing::WithParamInterface<BadConfiguration> {};

TEST_P(BadConfigurationTest, IsRefusedBeforeAnythingStarts) {
    const std::filesystem::path path = folder / "config.toml";
    if (GetParam().text == "/"s)
        std::filesystem::create_directories(path);
    else
        Write(GetParam().text);
    const std::string message =
        MessageOf<ConfigurationError>([&] { LoadConfiguration(path, true); });
    EXPECT_NE(message.find(GetParam().message), std::string::npos) << message;
    EXPECT_NE(message.find(path.string()), std::string::npos) << message;
}

const BadConfiguration badConfigurations[] = {
    {"Folder", "/", "Cannot read configuration file"},
    {"PollRateBeyondInt", "[Window.Input]\nPollRate = 4294967296\n", "\"Window/Input/PollRate\""},
    {"FullScreenWord", "[Window]\nFullScreen = 'yes'\n", "\"Window/FullScreen\""},
    {"ResolutionNotAPair", "[Window]\nResolution = '{800 600}'\n",
     "holds \"{800 600}\", which is not a size such as \"{1000,1000}\""},
    {"ResolutionBeyond16Bits", "[Window]\nResolution = '{70000,700}'\n", "from 0 to 65535"},
    {"ResolutionFraction", "[Window]\nResolution = '{1080.00000,700}'\n", "\"{1080.00000,700}\""},
};

INSTANTIATE_TEST_SUITE_P(Configuration, BadConfigurationTest, testing::ValuesIn(badConfigurations),
                         [](const auto& info) { return std::string(info.param.name); });

// --- printable text ---

TEST(PrintableTextTest, EscapesWhatWouldSteerTheTerminal) {
    EXPECT_EQ(Printable("é\tb\x1b[2J\x7f"), "é\\x09b\\x1b[2J\\x7f");
    EXPECT_EQ(Printable("\xc2\x9b \xff\xe2\x82"), "\\xc2\\x9b \\xff\\xe2\\x82"); // C1, bad, cut
    EXPECT_EQ(Printable("\\x1b"), "\\x1b"); // escaping twice changes nothing
    EXPECT_EQ(Quoted(std::string(41, 'a')), '"' + std::string(40, 'a') + "...\"");
    EXPECT_FALSE(IsUtf8("\xed\xa0\x80")); // a surrogate
    EXPECT_TRUE(IsUtf8("\xf4\x8f\xbf\xbf"));
}

// --- event echo ---

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

// --- PNG file ---

TEST(PngFileTest, PixelsSurviveTheRoundTripAndFailuresNameTheFile) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("inputlab_png_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    RgbImage image;
    image.width = 3;
    image.height = 2;
    image.pixels = {1, 2, 3, 250, 251, 252, 0, 0, 0, 9, 8, 7, 255, 0, 128, 40, 50, 60};
    WritePng(folder / "round.png", image);
    const RgbImage back = ReadPng(folder / "round.png");
    EXPECT_EQ(back.width, 3U);
    EXPECT_EQ(back.height, 2U);
    EXPECT_EQ(back.pixels, image.pixels);

    std::ofstream(folder / "text.png") << "not a picture";
    const std::string message =
        MessageOf<std::runtime_error>([&] { ReadPng(folder / "text.png"); });
    EXPECT_NE(message.find("Cannot read PNG file \"" + (folder / "text.png").string() + "\""),
              std::string::npos)
        << message;
    image.pixels.resize(5); // wrong size: refused, and no file is left behind
    EXPECT_THROW(WritePng(folder / "bad.png", image), std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.png"));
    std::filesystem::remove_all(folder);
}

// --- priority walks ---

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

// --- scene ---

// The end-to-end test reads pixels of the lab's screenshots, so these are the rules it relies on:
// a background per digit, the square under the cursor, and nothing drawn outside the drawable.

constexpr Window::Resolution drawable{1000, 800};

const Clock::time_point now = Clock::time_point{} + std::chrono::hours(1);

/// The colour at a point, as the renderer paints it: the last rectangle that covers it wins.
Colour ColourAt(const Scene& scene, int x, int y) {
    Colour colour = scene.background;
    for (const Rectangle& r : scene.rectangles)
        if (x >= r.x && y >= r.y && x < r.x + static_cast<int>(r.width) &&
            y < r.y + static_cast<int>(r.height))
            colour = r.colour;
    return colour;
}

TEST(SceneTest, SquareStartsInTheMiddleAndFollowsTheCursorOverTheDigitsBackground) {
    LabState state;
    EXPECT_EQ(ColourAt(BuildScene(state, drawable, drawable, now), 500, 400), SquareColour);

    state.background = 2;
    state.cursorSeen = true;
    state.cursor = {150, 100}; // in screen units, half the drawable's pixels
    const Scene scene = BuildScene(state, drawable, {500, 400}, now);
    EXPECT_EQ(scene.background, BackgroundColour(2));
    EXPECT_EQ(ColourAt(scene, 300, 200), SquareColour);
    EXPECT_EQ(ColourAt(scene, 300 + SquareSide / 2 - 1, 200 - SquareSide / 2), SquareColour);
    EXPECT_EQ(ColourAt(scene, 500, 400), scene.background); // the square has left the middle
    EXPECT_EQ(ColourAt(scene, 700, 300), scene.background);
}

TEST(SceneTest, EveryRectangleLiesInsideTheDrawable) {
    LabState state;
    state.cursorSeen = true;
    state.cursor = {-10, 795}; // half outside at the corner
    state.lastWheel = now;
    state.menuOpen = true;
    state.typed = std::wstring(500, L'x'); // more than fit
    const Scene scene = BuildScene(state, {700, 700}, {700, 700}, now);
    for (const Rectangle& r : scene.rectangles)
        EXPECT_TRUE(r.x >= 0 && r.y >= 0 && r.width > 0 && r.height > 0 && r.x + r.width <= 700U &&
                    r.y + r.height <= 700U)
            << r.x << ',' << r.y << ' ' << r.width << 'x' << r.height;
    EXPECT_TRUE(BuildScene(state, {0, 0}, {0, 0}, now).rectangles.empty()); // minimised
}

} // namespace
} // namespace InputLab
