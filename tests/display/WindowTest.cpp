// SPDX-License-Identifier: Zlib
#include "FakeConfigFile.h"
#include "RecordingMessageLog.h"
#include "ScopedInstance.h"
#include "WindowProbe.h"
#include "display/WindowFactoryImpl.h"
#include "display/WindowImpl.h"

#include <common/ApplicationErrorException.h>
#include <window/Manufacture.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <set>

namespace {

using ::testing::ElementsAre;
using Window::Resolution;
using Error = Common::ApplicationErrorException;
using Line = Fakes::RecordingMessageLog::Line;
using Write = std::pair<std::string, std::string>;
constexpr auto Info = Fakes::RecordingMessageLog::Level::Info;

// Each case runs in a process of its own, so each may use the one factory of the process.
class WindowTest : public ::testing::Test {
protected:
    void Manufacture() { factory.reset(Window::ManufactureWindowFactory()); }

    /// A window named "Game", as `CreateWindow` would make it but with a size of the test's own.
    Zenk::IntrudablePointer<Window::WindowImpl> Open(Resolution size = {800, 900},
                                                     bool fullScreen = false) {
        Manufacture();
        return Zenk::IntrudablePointer<Window::WindowImpl>(
            new Window::WindowImpl("Game", size, fullScreen));
    }

    /// The lines logged since the window was made.
    std::vector<Line> LaterLines() const { return {log.lines.begin() + 1, log.lines.end()}; }

    /// The text of the `Error` that `call` throws; empty when it throws none.
    template <class Call> static std::string FailureOf(Call&& call) {
        try {
            call();
        } catch (const Error& error) {
            return error.what();
        }
        return {};
    }

    Fakes::FakeConfigFile config;
    Fakes::RecordingMessageLog log;
    Fakes::ScopedInstance<Common::Config::SConfigFile> configEntry{config};
    Fakes::ScopedInstance<Common::Log::SMessageLog> logEntry{log};
    std::unique_ptr<Window::SWindowFactory> factory;
};

struct StoredRow {
    const char* name;
    const char* resolution; // null: nothing stored
    const char* fullScreen; // null: nothing stored
    Resolution created;     // checked only for a window that is not full screen
    const char* saved;      // the full-screen state written back
};

// Printed by name: GoogleTest would dump the bytes, padding included (uninitialised for a memory
// checker).
void PrintTo(const StoredRow& row, std::ostream* out) {
    *out << row.name;
}

class StoredSettingsTest : public WindowTest, public ::testing::WithParamInterface<StoredRow> {};

// Height decides first: a low window is raised whole, a narrow tall one only in width. Only
// full-screen values above 0 mean full screen.
TEST_P(StoredSettingsTest, CreatesAtTheFlooredSize) {
    const StoredRow& row = GetParam();
    if (row.resolution != nullptr)
        config.values["Window/Resolution"] = row.resolution;
    if (row.fullScreen != nullptr)
        config.values["Window/FullScreen"] = row.fullScreen;
    Manufacture();
    auto window = factory->CreateWindow();
    if (std::string(row.saved) == "0") {
        EXPECT_EQ(window->GetResolution(), row.created);
    }
    window.Reset();
    EXPECT_EQ(config.values["Window/FullScreen"], row.saved);
}

INSTANTIATE_TEST_SUITE_P(
    Stored, StoredSettingsTest,
    ::testing::Values(StoredRow{"NothingStored", nullptr, nullptr, {1000, 1000}, "0"},
                      StoredRow{"Default", "{1000,1000}", "0", {1000, 1000}, "0"},
                      StoredRow{"LowAndWide", "{900,600}", nullptr, {700, 700}, "0"},
                      StoredRow{"NarrowAndTall", "{600,900}", nullptr, {700, 900}, "0"},
                      StoredRow{"JustTooNarrow", "{699,700}", nullptr, {700, 700}, "0"},
                      StoredRow{"WideAtMinimum", "{900,700}", nullptr, {900, 700}, "0"},
                      StoredRow{"Zero", "{0,0}", "-1", {700, 700}, "0"},
                      StoredRow{"FullScreenTwo", nullptr, "2", {}, "1"}),
    [](const auto& info) { return std::string(info.param.name); });

// One factory per process, even after the first is gone; SDL lives only as long as it.
TEST_F(WindowTest, OnlyTheFirstManufactureSucceeds) {
    Manufacture();
    EXPECT_EQ(FailureOf([] { Window::ManufactureWindowFactory(); }),
              "Multiple instances of SWindowFactory");
    auto window = factory->CreateWindow();
    EXPECT_STREQ(SDL_GetWindowTitle(Probe::SdlWindowOf(window->GetNativeHandle())),
                 "Tavrino. Version: 905");
    window.Reset();
    factory.reset();
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
    EXPECT_THROW(Manufacture(), Error);
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
}

TEST_F(WindowTest, FailedStartReportsSdlAndUsesUpTheOneChance) {
    SDL_setenv("SDL_VIDEODRIVER", "nonexistent", 1);
    const std::string failure = FailureOf([this] { Manufacture(); }); // before SDL_GetError
    EXPECT_EQ(failure, std::string("Failed to initialize SDL: ") + SDL_GetError() + ".");
    SDL_setenv("SDL_VIDEODRIVER", "", 1); // SDL takes an empty name as none given
    EXPECT_THROW(Manufacture(), Error);
}

// SDL starts, but no Vulkan window can be made: the message carries SDL's reason, and the
// configuration is left as it was.
TEST_F(WindowTest, FailedWindowThrowsTheReasonAndWritesNothing) {
    SDL_setenv("SDL_VULKAN_LIBRARY", "libvulkan-missing.so.1", 1);
    Manufacture();
    // SDL's error text is overwritten since (the deleter met a null window): compare the start.
    const std::string expected = "Failed to create window: Tavrino. Version: 905\n->\t"
                                 "Failed loading libvulkan-missing.so.1: ";
    EXPECT_EQ(FailureOf([this] { factory->CreateWindow(); }).substr(0, expected.size()), expected);
    EXPECT_TRUE(config.writes.empty());
    EXPECT_EQ(log.lines.size(), 1U) << "only the creation line; no window was destroyed";
}

// A malformed stored size stays stored; a missing configuration file gives the service's own
// exception; neither spoils the factory.
TEST_F(WindowTest, ConfigurationFaultsLeaveTheFactoryUsable) {
    config.values["Window/Resolution"] = "{800 600}";
    Manufacture();
    EXPECT_EQ(FailureOf([this] { factory->CreateWindow(); }),
              "Failed to read configuration key: Window/Resolution.");
    EXPECT_EQ(config.values["Window/Resolution"], "{800 600}");
    EXPECT_TRUE(config.writes.empty());
    Zenk::UnregisterInstance<Common::Config::SConfigFile>();
    EXPECT_THROW(factory->CreateWindow(), Zenk::MissingInstance);
    Zenk::RegisterInstance<Common::Config::SConfigFile>(config);
    config.values["Window/Resolution"] = "{800,800}";
    EXPECT_TRUE(factory->CreateWindow());
}

TEST_F(WindowTest, LogsItsLifeAndSavesSizeThenState) {
    Open().Reset();
    EXPECT_THAT(log.lines, ElementsAre(Line{Info, "Creating window: Game"},
                                       Line{Info, "Destroying window: Game."}));
    EXPECT_THAT(config.writes, ElementsAre(Write{"Window/Resolution", "{800,900}"},
                                           Write{"Window/FullScreen", "0"}));
}

TEST_F(WindowTest, MinimisedWindowHasNoSizeAndSavesZero) {
    auto window = Open();
    ASSERT_TRUE(Probe::Minimise(Probe::SdlWindowOf(window->GetNativeHandle())));
    EXPECT_EQ(window->GetResolution(), (Resolution{0, 0}));
    EXPECT_TRUE(std::isnan(window->GetAspectRatio()));
    window.Reset();
    EXPECT_EQ(config.values["Window/Resolution"], "{0,0}");
}

TEST_F(WindowTest, FullScreenTwiceSwitchesOnceAndIsSaved) {
    auto window = Open();
    window->SetFullScreen(true);
    window->SetFullScreen(true);
    EXPECT_THAT(LaterLines(), ElementsAre(Line{Info, "Setting window Game to full screen."}));
    const Uint32 flags = SDL_GetWindowFlags(Probe::SdlWindowOf(window->GetNativeHandle()));
    EXPECT_NE(flags & SDL_WINDOW_FULLSCREEN_DESKTOP, 0U);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
    window.Reset();
    EXPECT_EQ(config.values["Window/FullScreen"], "1");
}

TEST_F(WindowTest, CreatedFullScreenIgnoresOnAndKeepsTheCursorHidden) {
    auto window = Open({800, 900}, true);
    window->SetFullScreen(true);
    EXPECT_TRUE(LaterLines().empty());
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
}

// The request goes to SDL as it came; SDL's minimum holds the window at 700 x 700 or more,
// field by field. The pixel count is a 32-bit int that wraps.
TEST_F(WindowTest, SetResolutionLogsAndResizesUnlessUnchanged) {
    auto window = Open();
    window->SetResolution({800, 900});
    EXPECT_TRUE(LaterLines().empty());
    window->SetResolution({800, 600});
    EXPECT_TRUE(Probe::PumpUntil([&] { return window->GetResolution() == Resolution{800, 700}; }));
    window->SetResolution({65535, 65535});
    EXPECT_THAT(LaterLines(),
                ElementsAre(Line{Info, "Setting resolutioon of window: Game to 800x600 total "
                                       "pixels 480000."},
                            Line{Info, "Setting resolutioon of window: Game to 65535x65535 total "
                                       "pixels -131071."}));
}

// The native handle is the window system's own: asked outside SDL, the window system finds the
// window under it, as a renderer would. Not on Wayland, where nobody but the window's own client
// knows its size.
TEST_F(WindowTest, WindowSystemFindsTheHandlesWindowAtItsSize) {
    auto window = Open({300, 1000});
    ASSERT_NE(window->GetNativeHandle(), Window::NativeHandle{});
    EXPECT_EQ(Probe::NativeSizeOf(window->GetNativeHandle()),
              std::optional<Resolution>(Resolution{700, 1000}));
}

// A field below the minimum is raised alone; the drawable is as large as the window.
TEST_F(WindowTest, SizesTitleAndExtensionsAreTheWindowsOwn) {
    auto window = Open({300, 1000});
    EXPECT_EQ(window->GetResolution(), (Resolution{700, 1000}));
    EXPECT_EQ(window->GetDrawableSize(), (Resolution{700, 1000}));
    EXPECT_FLOAT_EQ(window->GetAspectRatio(), 0.7F);

    // A title suffix replaces the last one; an empty one leaves the bare name.
    SDL_Window* sdl = Probe::SdlWindowOf(window->GetNativeHandle());
    window->SetTitleSuffix("60 fps");
    window->SetTitleSuffix("30 fps");
    EXPECT_STREQ(SDL_GetWindowTitle(sdl), "Game - 30 fps");
    window->SetTitleSuffix("");
    EXPECT_STREQ(SDL_GetWindowTitle(sdl), "Game");

    const Window::InstanceExtensions extensions = window->GetInstanceExtensions();
    ASSERT_EQ(extensions.count, 2U);
    const std::set<std::string> names(extensions.names.get(), extensions.names.get() + 2);
    EXPECT_EQ(names, Probe::SurfaceExtensions());
}

} // namespace
