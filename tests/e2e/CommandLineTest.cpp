#include "CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

namespace InputLab {
namespace {

LabOptions Parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "inputlab");
    return ParseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

std::string ErrorOf(std::vector<const char*> arguments) {
    try {
        Parse(std::move(arguments));
    } catch (const CommandLineError& error) {
        return error.what();
    }
    return "(no error)";
}

TEST(CommandLineTest, DefaultConfigFollowsTheXdgRules) {
    EXPECT_EQ(DefaultConfigPath("/x", "/home/u"), "/x/inputlab/config.toml");
    EXPECT_EQ(DefaultConfigPath("", "/home/u"), "/home/u/.config/inputlab/config.toml");
    EXPECT_EQ(DefaultConfigPath(nullptr, "/home/u"), "/home/u/.config/inputlab/config.toml");
    EXPECT_EQ(DefaultConfigPath(nullptr, nullptr), "inputlab/config.toml");
}

TEST(CommandLineTest, NoArgumentsRunUntilClosedWithoutExtras) {
    const LabOptions options = Parse({});
    EXPECT_FALSE(options.help);
    EXPECT_FALSE(options.frames);
    EXPECT_FALSE(options.screenshot);
    EXPECT_FALSE(options.script);
    EXPECT_FALSE(options.logFile);
    EXPECT_EQ(options.configPath.filename(), "config.toml");
}

TEST(CommandLineTest, EveryOptionIsTaken) {
    const LabOptions options = Parse({"--config", "c.toml", "--frames=12", "--screenshot", "s.png",
                                      "--script", "in.txt", "--log", "lab.log"});
    EXPECT_EQ(options.configPath, "c.toml");
    EXPECT_EQ(options.frames, 12U);
    EXPECT_EQ(options.screenshot, std::filesystem::path("s.png"));
    EXPECT_EQ(options.script, std::filesystem::path("in.txt"));
    EXPECT_EQ(options.logFile, std::filesystem::path("lab.log"));
}

TEST(CommandLineTest, HelpDescribesEveryOption) {
    const LabOptions options = Parse({"--help"});
    ASSERT_TRUE(options.help);
    for (const char* option :
         {"--help", "--config", "--log", "--frames", "--screenshot", "--script"})
        EXPECT_NE(options.helpText.find(option), std::string::npos) << option;
}

struct BadCommandLine {
    const char* name;
    std::vector<const char*> arguments;
    const char* message;
};

class BadCommandLineTest : public testing::TestWithParam<BadCommandLine> {};

TEST_P(BadCommandLineTest, GivesOneMessageNamingTheProblem) {
    const std::string message = ErrorOf(GetParam().arguments);
    EXPECT_NE(message.find(GetParam().message), std::string::npos) << message;
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, BadCommandLineTest,
    testing::Values(
        BadCommandLine{"UnknownOption", {"--fullscreen"}, "unrecognised option '--fullscreen'"},
        BadCommandLine{"MissingValue", {"--frames"}, "--frames"},
        BadCommandLine{
            "FramesZero", {"--frames", "0"}, "whole number of frames above 0, not \"0\""},
        BadCommandLine{"FramesNegative", {"--frames", "-3"}, "not \"-3\""},
        BadCommandLine{"FramesWord", {"--frames", "many"}, "not \"many\""},
        BadCommandLine{"FramesHuge", {"--frames", "99999999999999999999999"}, "not \"9999"},
        BadCommandLine{"StrayWord", {"extra"}, "extra"},
        BadCommandLine{"TwiceTheSame", {"--config", "a", "--config", "b"}, "config"}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace InputLab
