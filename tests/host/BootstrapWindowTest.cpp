// A real window, stood up by the bootstrap, saving its state through the host kit's
// configuration file. Needs an X server with a Vulkan driver (run under xvfb-run).
#include "LibraryEntryPoints.h"

#include <host/Bootstrap.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

class BootstrapWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() /
                 ("host-window-" +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder);
        settings.configFile = folder / "config" / "engine.toml";
        settings.log = {false, folder / "engine.log"};
    }
    void TearDown() override { fs::remove_all(folder); }

    /// Opens a window, checks its size, and closes everything again.
    void RunWindow(const Window::Resolution& expected) {
        Host::Bootstrap bootstrap(settings, HostTests::RealFactoryOnly());
        auto window = bootstrap.WindowFactory().CreateWindow();
        const auto size = window->GetResolution();
        EXPECT_EQ(size.width, expected.width);
        EXPECT_EQ(size.height, expected.height);
    }

    std::string LogText() const {
        std::ifstream in(settings.log.file);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    fs::path folder;
    Host::BootstrapSettings settings;
};

TEST_F(BootstrapWindowTest, FirstRunWritesTheDefaultsToANewFile) {
    RunWindow({1000, 1000});
    Host::ConfigFile saved(settings.configFile);
    EXPECT_EQ(saved.ReadText("Window/Resolution", ""), "{1000,1000}");
    EXPECT_EQ(saved.ReadInteger("Window/FullScreen", -1), 0);
    const std::string log = LogText();
    EXPECT_NE(log.find("] [info] Creating window: "), std::string::npos) << log;
    EXPECT_NE(log.find("] [info] Destroying window: "), std::string::npos) << log;
}

TEST_F(BootstrapWindowTest, HandEditedSizeIsUsedAndSavedBack) {
    fs::create_directories(settings.configFile.parent_path());
    std::ofstream(settings.configFile)
        << "# edited by hand\n[Window]\nResolution = \"{900,800}\"\nFullScreen = false\n";
    RunWindow({900, 800});
    Host::ConfigFile saved(settings.configFile);
    EXPECT_EQ(saved.ReadText("Window/Resolution", ""), "{900,800}");
    EXPECT_EQ(saved.ReadText("Window/FullScreen", ""), "0");
}

} // namespace
