// SPDX-License-Identifier: Zlib
// The lab's command line: defaults, every option, and one message per mistake.
#include "CommandLine.h"

#include "LabTest.h"

#include <window/Version.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace InputLab {
namespace {

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

} // namespace
} // namespace InputLab
