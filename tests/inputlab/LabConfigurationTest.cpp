// SPDX-License-Identifier: Zlib
// The lab reads the configuration as the library will, and refuses a bad one before it starts.
#include "LabConfiguration.h"

#include "LabTest.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

using namespace std::string_literals;

namespace InputLab {
namespace {

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

} // namespace
} // namespace InputLab
