// SPDX-License-Identifier: Zlib
// The host kit's services, each on its own (files in a folder of the test case, a clock moved by
// hand), and the bootstrap that stands them up with the window library.
#include "ForeignLocale.h"
#include "HostTest.h"

#include <host/Bootstrap.h>
#include <zenkbase/singleton.h>

#include <iterator>
#include <regex>
#include <set>
#include <stdexcept>
#include <vector>

#if !defined(_WIN32)
#include <sys/wait.h>
#endif

namespace {

using namespace HostTests;
using ::testing::HasSubstr;

class ConfigFileTest : public FolderTest {
protected:
    const fs::path path = folder / "settings" / "engine.toml";
};

TEST_F(ConfigFileTest, WritesSurviveIntoTheNextInstanceAndRemoveStaleTemporaryFiles) {
    // As writers killed mid-write leave them; only those of this very file are removed.
    for (const char* name :
         {"engine.toml.tmp.Ab3xYz", "engine.toml.tmp.Ab3xY", "other.toml.tmp.Ab3xYz"})
        Store(path.parent_path() / name, "[half");
    {
        Host::ConfigFile config(path);
        config.WriteText("Window/FullScreen", "1");
        config.WriteText("Window/Visible", "0");
        config.WriteText("Window/Input/PollRate", "90");
    }
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(path.parent_path()))
        names.insert(entry.path().filename().string());
    EXPECT_EQ(names, (std::set<std::string>{"engine.toml", "engine.toml.lock",
                                            "engine.toml.tmp.Ab3xY", "other.toml.tmp.Ab3xYz"}));
    Host::ConfigFile next(path);
    EXPECT_EQ(next.ReadInteger("Window/FullScreen", 7), 1);
    EXPECT_EQ(next.ReadInteger("Window/Visible", 7), 0);
    EXPECT_EQ(next.ReadInteger("Window/Input/PollRate", 60), 90);
    EXPECT_THAT(Stored(path), HasSubstr("[Window.Input]"));
}

class ConfigFileValueTest
    : public ConfigFileTest,
      public ::testing::WithParamInterface<std::pair<const char*, const char*>> {};

// Each row: a hand-written TOML value, and what ReadInteger gives or how it is refused.
TEST_P(ConfigFileValueTest, HandWrittenValueReadsAsAnIntegerOrIsRefused) {
    const auto [stored, integer] = GetParam();
    Store(path, std::string("[Section]\nKey = ") + stored + "\n");
    Host::ConfigFile config(path);
    const std::string refusal = "Configuration key \"Section/Key\" in \"" + path.string() + "\" ";
    EXPECT_EQ(Outcome([&] { return std::to_string(config.ReadInteger("Section/Key", -1)); }),
              std::string(integer).rfind("holds", 0) ? integer : refusal + integer);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ConfigFileValueTest,
    ::testing::Values(std::pair{"\"-40\"", "-40"}, std::pair{"true", "1"},
                      std::pair{"\"12px\"", "holds \"12px\", which is not an integer"},
                      std::pair{"2147483648", "holds 2147483648, which is not an integer"},
                      std::pair{"[1, 2]", "holds an array, not a value"}));

// An engine's global locale that groups digits or writes a decimal comma changes nothing that the
// file gives or takes.
TEST_F(ConfigFileTest, NumbersReadAndWriteTheSameUnderEveryLocale) {
    Store(path, "Big = 1234567\nHalf = 1234.5\nText = \"-4000\"\n");
    for (const Fakes::ForeignLocale& locale : Fakes::foreignLocales) {
        SCOPED_TRACE(locale.name);
        const Fakes::ScopedGlobalLocale global(locale);
        Host::ConfigFile config(path);
        EXPECT_EQ(config.ReadText("Big", ""), "1234567");
        EXPECT_EQ(config.ReadText("Half", ""), "1234.5");
        EXPECT_EQ(config.ReadInteger("Big", 0), 1234567);
        EXPECT_EQ(config.ReadInteger("Text", 0), -4000);
        config.WriteText(locale.name, "1234567");
        EXPECT_EQ(Host::ConfigFile(path).ReadText(locale.name, ""), "1234567");
    }
    EXPECT_THAT(Stored(path), HasSubstr("Big = 1234567\n"));
    EXPECT_THAT(Stored(path), HasSubstr("Half = 1234.5\n"));
}

class ConfigFileCorruptTest
    : public ConfigFileTest,
      public ::testing::WithParamInterface<std::pair<const char*, const char*>> {};

// Each row: a corrupt file, and where and why it is refused.
TEST_P(ConfigFileCorruptTest, IsReportedWithItsNameAndLineAndLeftAsItWas) {
    const auto [corrupt, reason] = GetParam();
    Store(path, corrupt);
    EXPECT_EQ(Outcome([&] { Host::ConfigFile config(path); }),
              "Configuration file \"" + path.string() + "\" is not valid TOML at " + reason);
    EXPECT_EQ(Stored(path), corrupt);
}

INSTANTIATE_TEST_SUITE_P(
    Files, ConfigFileCorruptTest,
    ::testing::Values(
        std::pair{
            "[Window]\nResolution = \"{800,600}\"\nFullScreen = \n",
            "line 3, column 14: Error while parsing key-value pair: expected value, saw '\\n'"},
        std::pair{"x = '\u00a1\xf3\xb0_'\n",
                  "line 1, column 6: Encountered invalid utf-8 sequence"},
        // toml++ 3.3 alone reaches undefined behaviour on this one.
        std::pair{
            "a\u00a1= 1\n",
            "line 1, column 2: Error while parsing key-value pair: expected '=', saw '\u00a1'"}));

struct RoundTripRow {
    const char* name;
    std::string stored, key, text; // a hand-edited file, and what is written into it
    std::string refusal = "";      // the start of the message, or empty when it is stored
    std::string keptKey = "Kept", kept = "as is"; // a key of the file that must read the same
};

void PrintTo(const RoundTripRow& row, std::ostream* out) {
    *out << row.name;
}

class ConfigFileRoundTripTest : public ConfigFileTest,
                                public ::testing::WithParamInterface<RoundTripRow> {};

TEST_P(ConfigFileRoundTripTest, WrittenTextReadsBackExactlyOrIsRefusedWithTheFileKept) {
    const RoundTripRow& row = GetParam();
    Store(path, row.stored);
    Host::ConfigFile config(path);
    const std::string refusal = Outcome([&] { config.WriteText(row.key, row.text); });
    EXPECT_EQ(refusal.substr(0, row.refusal.size()), row.refusal) << refusal;
    if (row.refusal.empty())
        EXPECT_EQ(Host::ConfigFile(path).ReadText(row.key, "none"), row.text);
    else
        EXPECT_EQ(Stored(path), row.stored);
    EXPECT_EQ(Host::ConfigFile(path).ReadText(row.keptKey, "none"), row.kept);
    EXPECT_EQ(config.ReadText(row.keptKey, "none"), row.kept);
}

const std::string plain = "Kept = 'as is'\n";
const std::string notUtf8 = " is not UTF-8, which a TOML file cannot hold";

INSTANTIATE_TEST_SUITE_P(
    Rows, ConfigFileRoundTripTest,
    ::testing::Values(
        RoundTripRow{"QuoteInAHandWrittenKey", "\"it's\" = 'a'\n", "Window/FullScreen", "1", "",
                     "it's", "a"},
        RoundTripRow{"TabInAHandWrittenKey", "\"a\\tb\" = 'a'\n", "K", "1", "", "a\tb", "a"},
        RoundTripRow{"TripleQuoteInAHandWrittenText", "Kept = \"x\\n'''\"\n", "K", "1", "", "Kept",
                     "x\n'''"},
        RoundTripRow{"EveryShapeOfValue",
                     plain + "f = [nan, -0.0, 0.1, 1e300, 0x1F, 1979-05-27T07:32:00.5Z]\n"
                             "t = { \"it's\" = { x = [] } }\n[[a.b]]\nc = 1\n[a.b.d]\n[[a.b]]\n",
                     "a/K", "1"},
        RoundTripRow{"TripleQuoteInAText", plain, "K", "x\n'''"},
        RoundTripRow{"LeadingLineBreakInAText", plain, "K", "\nline"},
        RoundTripRow{"ControlCharactersInAText", plain, "K", std::string("\0\x7f\r\t\x1b\"\\", 7)},
        RoundTripRow{"QuoteInAKey", plain, "Window/it's", "1"},
        RoundTripRow{"TabInAKey", plain, "a\tb", "1"},
        RoundTripRow{"LineBreakInAKey", plain, "a\n'''", "1"},
        RoundTripRow{"NonAsciiKeyAndText", plain, "Fen\u00eatre/\u00a1", "\u041f\u3001\ufeff"},
        // A private-use character of the kind that stands in for "\u00a1" while reading.
        RoundTripRow{"PrivateUseBesideNonAscii", plain, "\U000F0000", "\u00a1\U000F0000"},
        RoundTripRow{"TextNotUtf8", plain, "K", "\xff",
                     "Configuration text for key \"K\"" + notUtf8},
        RoundTripRow{"SurrogateInText", plain, "K", "\xed\xa0\x80",
                     "Configuration text for key \"K\"" + notUtf8},
        RoundTripRow{"KeyNotUtf8", plain, "a/\xc3", "1",
                     "Configuration key \"a/\\xC3\"" + notUtf8}),
    [](const auto& info) { return std::string(info.param.name); });

#if !defined(_WIN32)
TEST_F(ConfigFileTest, WritersInTwoProcessesKeepEachOthersKeys) {
    Store(path, "");
    const pid_t child = fork();
    const std::string side = child == 0 ? "Child/" : "Parent/";
    try {
        Host::ConfigFile config(path);
        for (int i = 0; i < 20; ++i)
            config.WriteText(side + std::to_string(i), std::to_string(i));
    } catch (...) {
        if (child == 0)
            _exit(1);
        throw;
    }
    if (child == 0)
        _exit(0); // leaves the folder to the parent
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    Host::ConfigFile config(path);
    for (const char* written : {"Child/", "Parent/"})
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(config.ReadText(written + std::to_string(i), "lost"), std::to_string(i));
}
#endif

TEST_F(ConfigFileTest, WriteThroughAValueIsRefusedAndTheFileKept) {
    Store(path, "Value = 3\n");
    Host::ConfigFile config(path);
    EXPECT_EQ(Outcome([&] { config.WriteText("Value/Sub", "x"); }),
              "Configuration key \"Value/Sub\" in \"" + path.string() +
                  "\": \"Value\" is not a table");
    EXPECT_EQ(Stored(path), "Value = 3\n");
}

TEST_F(ConfigFileTest, WriteKeepsEditsMadeMeanwhileAndRefusesAFileThatBecameCorrupt) {
    Host::ConfigFile config(path);
    Store(path, "Edited = 'by hand'\n");
    config.WriteText("Window/Visible", "1");
    EXPECT_EQ(Host::ConfigFile(path).ReadText("Edited", ""), "by hand");
    Store(path, "[Window\n");
    EXPECT_THAT(Outcome([&] { config.WriteText("Window/Visible", "0"); }),
                HasSubstr(path.string() + "\" is not valid TOML at line 1, column "));
    EXPECT_EQ(Stored(path), "[Window\n");
}

TEST_F(ConfigFileTest, WriteKeepsTheModeAndTheLinkAndAnEmptyPathIsRefused) {
    const auto mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    Store(path, "");
    fs::permissions(path, mode);
    const fs::path link = folder / "link.toml";
    fs::create_symlink(path, link);
    Host::ConfigFile(link).WriteText("Key", "1");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(path).permissions(), mode);
    EXPECT_EQ(Host::ConfigFile(path).ReadText("Key", ""), "1");
    EXPECT_THROW(Host::ConfigFile(""), std::invalid_argument);
}

using MessageLogTest = FolderTest;

TEST_F(MessageLogTest, RecordsCarryTheirLevelAndReachTheFileAtOnceAcrossSessions) {
    const fs::path file = folder / "logs" / "session.log";
    Host::MessageLog({false, file}).LogInfo("Creating window: 100% {} {0}");
    Host::MessageLog log({false, file}); // appends
    log.LogError("Failed to set fullscreen mode\n->\tno display");
    // Still open: every record must already be in the file.
    const std::regex stamp(R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\] )");
    // A record ends as the platform's text lines do; a line break inside a message is its own.
#if defined(_WIN32)
    const std::string end = "\r\n";
#else
    const std::string end = "\n";
#endif
    EXPECT_EQ(std::regex_replace(Stored(file), stamp, "<stamp>"),
              "<stamp>[info] Creating window: 100% {} {0}" + end +
                  "<stamp>[error] Failed to set fullscreen mode\n->\tno display" + end);
}

TEST(RuntimeUniqueIdTest, IdsIncreaseAcrossInstances) {
    Host::RuntimeUniqueId first, second; // as when a host makes a new generator
    const long long a = first.NextId(), b = second.NextId(), c = first.NextId();
    EXPECT_TRUE(0 < a && a < b && b < c) << a << " " << b << " " << c;
}

using Ticks = std::vector<unsigned long long>;

/// A frame utility on a clock that only the test moves, so no case depends on real time.
class FrameUtilityTest : public ::testing::Test {
protected:
    unsigned long long now = 1000;
    Host::FrameUtility frames{[this] { return now; }};

    Zenk::IntrudablePointer<Common::ITicker> Recording(unsigned long long period, Ticks& into) {
        auto ticker = frames.MakeTicker(period);
        ticker->SetTickCallback([&into](unsigned long long at) { into.push_back(at); });
        return ticker;
    }
    void PumpAt(unsigned long long at) {
        now = at;
        frames.Pump();
    }
};

struct ScheduleRow {
    unsigned long long period;
    Ticks pumps, fired; // clock readings of the pumps, the ticker being made at 1000
};

class FrameUtilityScheduleTest : public FrameUtilityTest,
                                 public ::testing::WithParamInterface<ScheduleRow> {};

TEST_P(FrameUtilityScheduleTest, FiresWhenDueAtMostOncePerPumpAndDropsMissedPeriods) {
    Ticks fired;
    const auto ticker = Recording(GetParam().period, fired);
    for (const auto at : GetParam().pumps)
        PumpAt(at);
    EXPECT_EQ(fired, GetParam().fired);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FrameUtilityScheduleTest,
    ::testing::Values(ScheduleRow{100, {1000, 1099}, {}},
                      ScheduleRow{100, {1050, 1100, 1150, 1199, 1200}, {1100, 1200}},
                      // Slightly late pumps keep the beat: the grid, not the pump, sets the next.
                      ScheduleRow{100, {1130, 1210, 1300}, {1130, 1210, 1300}},
                      // A stall of many periods gives one tick, the next a whole period later.
                      ScheduleRow{100, {1950, 1960, 2049, 2050}, {1950, 2050}},
                      ScheduleRow{0, {1000, 1000, 1001}, {1000, 1000, 1001}},
                      ScheduleRow{~0ull, {1000, 5000}, {}})); // 1000 + period must not wrap

TEST(FrameUtilityPaceTest, ClockFollowsThePumpsAndNeedsAStep) {
    Host::FrameUtility frames(Host::FramePace{16667});
    Ticks fired;
    auto ticker = frames.MakeTicker(33333);
    ticker->SetTickCallback([&fired](unsigned long long at) { fired.push_back(at); });
    for (int pump = 0; pump < 4; ++pump)
        frames.Pump();
    EXPECT_EQ(fired, (Ticks{33334, 66668}));
    EXPECT_THROW(Host::FrameUtility(Host::FramePace{0}), std::invalid_argument);
}

TEST_F(FrameUtilityTest, DroppedTickerStopsEvenWhenDroppedInsideACallback) {
    Ticks fired;
    auto plain = Recording(10, fired);
    Zenk::IntrudablePointer<Common::ITicker> victim;
    auto self = frames.MakeTicker(10);
    self->SetTickCallback([&](unsigned long long) {
        victim.Reset(); // made later, so not yet called in this pump
        self.Reset();   // destroys the ticker and this function while the call runs
    });
    victim = Recording(10, fired);
    PumpAt(1010);
    plain.Reset();
    PumpAt(1020);
    EXPECT_EQ(fired, Ticks{1010});
    EXPECT_EQ(frames.TickerCount(), 0u);
    auto orphan = Host::FrameUtility().MakeTicker(1);
    orphan.Reset(); // must not touch its dead frame utility
}

TEST_F(FrameUtilityTest, TickerMadeInACallbackWaitsAndOneThatThrowsIsRescheduled) {
    Ticks fired;
    auto silent = frames.MakeTicker(0); // without a callback it is never called
    Zenk::IntrudablePointer<Common::ITicker> late;
    auto thrower = frames.MakeTicker(10);
    thrower->SetTickCallback([&](unsigned long long) {
        if (!late)
            late = Recording(5, fired);
        throw std::runtime_error("reactor failed");
    });
    EXPECT_THROW(PumpAt(1010), std::runtime_error);
    EXPECT_EQ(frames.TimeToNextTick(), 5u);
    PumpAt(1015); // the new ticker's first period; the thrower is next due at 1020
    EXPECT_EQ(fired, Ticks{1015});
    EXPECT_THROW(PumpAt(1020), std::runtime_error);
    PumpAt(1021); // the ticker after the thrower stayed due
    EXPECT_EQ(fired, (Ticks{1015, 1021}));
}

using Journal = std::vector<std::string>;

std::string Registered() {
    return std::to_string(Zenk::Singleton<Common::Config::SConfigFile>().Exists() +
                          Zenk::Singleton<Common::Log::SMessageLog>().Exists() +
                          Zenk::Singleton<Common::Unique::SRuntimeUniqueId>().Exists() +
                          Zenk::Singleton<Common::SFrameUtility>().Exists() +
                          Zenk::Singleton<Window::SWindowFactory>().Exists());
}

/// A stand-in window factory that notes how many of the five instances stand in the instance
/// storage when it is made and deleted, so that the order of start-up is seen without a window
/// system.
class WatchingFactory : public Window::SWindowFactory {
public:
    explicit WatchingFactory(Journal& journal) : journal(journal) {
        journal.push_back("factory made with " + Registered());
    }
    ~WatchingFactory() override { journal.push_back("factory deleted with " + Registered()); }
    Zenk::IntrudablePointer<Window::IWindow> CreateWindow() override { return nullptr; }

private:
    Journal& journal;
};

class BootstrapTest : public FolderTest {
protected:
    /// The message of the failure, after checking that the storage is as it was.
    std::string FailureOf() {
        std::string message = Outcome([this] { Host::Bootstrap(settings, library); });
        EXPECT_EQ(Registered(), "0");
        return message;
    }

    /// The library's own collector, made once: it is never destroyed.
    Window::SInputCollector* Collector() {
        journal.push_back("collector made with " + Registered());
        static auto* const collector = Window::ManufactureInputCollector();
        return collector;
    }

    Host::BootstrapSettings settings{folder / "engine.toml", {false, folder / "engine.log"}};
    Journal journal;
    Host::LibraryEntryPoints library{[this] { return new WatchingFactory(journal); },
                                     [this] { return Collector(); }};
};

TEST_F(BootstrapTest, StartsServicesThenFactoryThenCollectorAndStopsInReverse) {
    {
        Host::Bootstrap bootstrap(settings, library);
        EXPECT_EQ(Zenk::Singleton<Window::SWindowFactory>().Instance(), &bootstrap.WindowFactory());
    }
    // The factory leaves the storage before it goes, and goes before every service.
    EXPECT_EQ(journal,
              (Journal{"factory made with 4", "collector made with 5", "factory deleted with 4"}));
    EXPECT_EQ(Registered(), "0");
}

TEST_F(BootstrapTest, FailureOfALaterStepUndoesTheEarlierOnes) {
    library.manufactureInputCollector = []() -> Window::SInputCollector* {
        throw std::runtime_error("Multiple instances of SInputCollector");
    };
    EXPECT_EQ(FailureOf(), "Multiple instances of SInputCollector");
    EXPECT_EQ(journal, (Journal{"factory made with 4", "factory deleted with 4"}));
    library.manufactureWindowFactory = [] { return nullptr; };
    EXPECT_EQ(FailureOf(), "The window library gave no window factory");
}

TEST_F(BootstrapTest, CorruptConfigurationFailsBeforeTheFactoryIsMade) {
    Store(settings.configFile, "[Window\n");
    EXPECT_THAT(FailureOf(),
                HasSubstr(settings.configFile.string() + "\" is not valid TOML at line 1"));
    EXPECT_TRUE(journal.empty());
}

} // namespace
