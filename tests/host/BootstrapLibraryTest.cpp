// The bootstrap with the window library's real factory, on drivers that need no display. Each
// case runs in a process of its own: the factory can be made once per process.
#include "LibraryEntryPoints.h"
#include "Registered.h"

#include <common/ApplicationErrorException.h>
#include <host/Bootstrap.h>

#include <SDL.h>
#include <gtest/gtest.h>

#include <string>

namespace {

namespace fs = std::filesystem;

class BootstrapLibraryTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() /
                 ("host-library-" +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder);
        settings.configFile = folder / "engine.toml";
        settings.log = {false, folder / "engine.log"};
    }
    void TearDown() override { fs::remove_all(folder); }

    fs::path folder;
    Host::BootstrapSettings settings;
};

TEST_F(BootstrapLibraryTest, RunsTheWindowSystemForItsLifetime) {
    SDL_setenv("SDL_VIDEODRIVER", "dummy", 1);
    {
        Host::Bootstrap bootstrap(settings, HostTests::RealFactoryOnly());
        EXPECT_NE(SDL_WasInit(SDL_INIT_VIDEO), 0u);
    }
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0u);
    EXPECT_EQ(HostTests::Registered(), "");
}

TEST_F(BootstrapLibraryTest, WindowSystemFailureIsCaughtByTypeAndUndoesEverything) {
    SDL_setenv("SDL_VIDEODRIVER", "nonexistent", 1);
    try {
        Host::Bootstrap bootstrap(settings, HostTests::RealFactoryOnly());
        FAIL() << "nothing thrown";
    } catch (const Common::ApplicationErrorException& failure) {
        const std::string message = failure.what();
        EXPECT_EQ(message.rfind("Failed to initialize SDL: ", 0), 0u) << message;
        EXPECT_EQ(message.back(), '.');
    }
    EXPECT_EQ(HostTests::Registered(), "");
}

TEST_F(BootstrapLibraryTest, SecondBootstrapInOneProcessIsRefused) {
    SDL_setenv("SDL_VIDEODRIVER", "dummy", 1);
    { Host::Bootstrap first(settings, HostTests::RealFactoryOnly()); }
    try {
        Host::Bootstrap second(settings, HostTests::RealFactoryOnly());
        FAIL() << "nothing thrown";
    } catch (const Common::ApplicationErrorException& failure) {
        EXPECT_STREQ(failure.what(), "Multiple instances of SWindowFactory");
    }
    EXPECT_EQ(HostTests::Registered(), "");
}

} // namespace
