// SPDX-License-Identifier: Zlib
// The configuration file: values written survive into the next instance and the next process,
// corrupt or foreign text is refused with the file kept, and numbers read the same under any
// locale.
#include "ForeignLocale.h"
#include "HostTest.h"

#include <host/ConfigFile.h>

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

} // namespace
