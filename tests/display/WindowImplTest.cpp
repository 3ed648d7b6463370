#include "display/WindowImpl.h"

#include "FakeConfigFile.h"
#include "RecordingMessageLog.h"
#include "ScopedInstance.h"
#include "WindowProbe.h"
#include "display/ResolutionText.h"

#include <window/Manufacture.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <set>

namespace {

using Info = Fakes::RecordingMessageLog::Level;
using Window::Resolution;
using Line = Fakes::RecordingMessageLog::Line;
using Write = std::pair<std::string, std::string>;

class WindowImplTest : public ::testing::Test {
protected:
    void SetUp() override {
        Probe::RequireDisplay();
        factory.reset(Window::ManufactureWindowFactory());
    }

    /// A window named "Game", as `CreateWindow` would make it but with a size of the test's own.
    Zenk::IntrudablePointer<Window::WindowImpl> Open(Resolution size = {800, 900},
                                                     bool fullScreen = false) {
        return Zenk::IntrudablePointer<Window::WindowImpl>(
            new Window::WindowImpl("Game", size, fullScreen));
    }

    /// The lines logged since the window was made.
    std::vector<Line> LaterLines() const { return {log.lines.begin() + 1, log.lines.end()}; }

    Fakes::FakeConfigFile config;
    Fakes::RecordingMessageLog log;
    Fakes::ScopedInstance<Common::Config::SConfigFile> configEntry{config};
    Fakes::ScopedInstance<Common::Log::SMessageLog> logEntry{log};
    std::unique_ptr<Window::SWindowFactory> factory;
};

TEST_F(WindowImplTest, LogsItsLifeAndSavesSizeThenState) {
    Open().Reset();
    EXPECT_THAT(log.lines, ::testing::ElementsAre(Line{Info::Info, "Creating window: Game"},
                                                  Line{Info::Info, "Destroying window: Game."}));
    EXPECT_THAT(config.writes, ::testing::ElementsAre(Write{"Window/Resolution", "{800,900}"},
                                                      Write{"Window/FullScreen", "0"}));
}

TEST_F(WindowImplTest, UnnamedWindowIsCalledWindow) {
    Zenk::IntrudablePointer<Window::WindowImpl>(new Window::WindowImpl("", {800, 800}, false))
        .Reset();
    EXPECT_EQ(log.lines.front().text, "Creating window: Window");
    EXPECT_EQ(log.lines.back().text, "Destroying window: Window.");
}

TEST_F(WindowImplTest, FieldBelowMinimumIsRaisedAlone) {
    EXPECT_EQ(Open({300, 900})->GetResolution(), (Resolution{700, 900}));
}

TEST_F(WindowImplTest, MinimisedWindowHasNoSizeAndSavesZero) {
    auto window = Open();
    ASSERT_TRUE(Probe::Minimise(Probe::SdlWindowOf(window->GetNativeHandle())));
    EXPECT_EQ(window->GetResolution(), (Resolution{0, 0}));
    EXPECT_EQ(window->GetDrawableSize(), (Resolution{0, 0}));
    EXPECT_TRUE(std::isnan(window->GetAspectRatio()));
    EXPECT_EQ(window->AdjustResolution({0, 0}), (Resolution{0, 0}));
    window->SetResolution({0, 0});
    EXPECT_TRUE(LaterLines().empty());

    window.Reset();
    EXPECT_EQ(config.values["Window/Resolution"], "{0,0}");
}

TEST_F(WindowImplTest, SizesAndAspectRatioFollowSdl) {
    auto window = Open({800, 1000});
    EXPECT_EQ(window->GetResolution(), (Resolution{800, 1000}));
    EXPECT_EQ(window->GetDrawableSize(), (Resolution{800, 1000}));
    EXPECT_FLOAT_EQ(window->GetAspectRatio(), 0.8F);
}

TEST_F(WindowImplTest, FullScreenTwiceSwitchesOnceAndIsSaved) {
    auto window = Open();
    SDL_Window* sdl = Probe::SdlWindowOf(window->GetNativeHandle());
    window->SetFullScreen(true);
    window->SetFullScreen(true);
    EXPECT_THAT(LaterLines(),
                ::testing::ElementsAre(Line{Info::Info, "Setting window Game to full screen."}));
    EXPECT_NE(SDL_GetWindowFlags(sdl) & SDL_WINDOW_FULLSCREEN_DESKTOP, 0U);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);

    // Whatever size the switch has reached by now (the X server may lag) is the one saved.
    const Resolution last = window->GetResolution();
    window.Reset();
    EXPECT_THAT(config.writes,
                ::testing::ElementsAre(Write{"Window/Resolution", Window::ResolutionToText(last)},
                                       Write{"Window/FullScreen", "1"}));
}

TEST_F(WindowImplTest, CreatedFullScreenIgnoresOnAndLeavingShowsTheCursor) {
    auto window = Open({800, 900}, true);
    window->SetFullScreen(true);
    EXPECT_TRUE(LaterLines().empty());
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);

    // Leaving is logged with the same words as entering.
    window->SetFullScreen(false);
    EXPECT_THAT(LaterLines(),
                ::testing::ElementsAre(Line{Info::Info, "Setting window Game to full screen."}));
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
}

struct ResizeRow {
    const char* name;
    Resolution request;
    const char* line; // null: nothing logged
    Resolution result;
};

void PrintTo(const ResizeRow& row, std::ostream* out) {
    *out << row.name;
}

class SetResolutionTest : public WindowImplTest, public ::testing::WithParamInterface<ResizeRow> {};

// Starting from 800 x 900. The request goes to SDL as it came; SDL's minimum holds the window at
// 700 x 700 or more, field by field.
TEST_P(SetResolutionTest, LogsAndResizesUnlessUnchanged) {
    auto window = Open();
    window->SetResolution(GetParam().request);
    if (GetParam().line == nullptr)
        EXPECT_TRUE(LaterLines().empty());
    else
        EXPECT_THAT(LaterLines(), ::testing::ElementsAre(Line{Info::Info, GetParam().line}));
    EXPECT_TRUE(Probe::PumpUntil([&] { return window->GetResolution() == GetParam().result; }))
        << "size stayed " << window->GetResolution().width << "x" << window->GetResolution().height;
}

INSTANTIATE_TEST_SUITE_P(
    Requests, SetResolutionTest,
    ::testing::Values(
        ResizeRow{"Unchanged", {800, 900}, nullptr, {800, 900}},
        ResizeRow{"Larger",
                  {1000, 1000},
                  "Setting resolutioon of window: Game to 1000x1000 total pixels 1000000.",
                  {1000, 1000}},
        ResizeRow{"LowerThanMinimum",
                  {800, 600},
                  "Setting resolutioon of window: Game to 800x600 total pixels 480000.",
                  {800, 700}},
        ResizeRow{"BothBelowMinimum",
                  {300, 300},
                  "Setting resolutioon of window: Game to 300x300 total pixels 90000.",
                  {700, 700}},
        ResizeRow{"ProductBeyondInt",
                  {65535, 65535},
                  "Setting resolutioon of window: Game to 65535x65535 total pixels -131071.",
                  {65535, 65535}}),
    [](const auto& info) { return std::string(info.param.name); });

struct AdjustRow {
    const char* name;
    Resolution request;
    Resolution result;
};

void PrintTo(const AdjustRow& row, std::ostream* out) {
    *out << row.name;
}

class AdjustResolutionTest : public WindowImplTest,
                             public ::testing::WithParamInterface<AdjustRow> {};

TEST_P(AdjustResolutionTest, ClampsEachFieldOrSignalsNoChange) {
    EXPECT_EQ(Open()->AdjustResolution(GetParam().request), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(OnAnOpenWindowOf800x900, AdjustResolutionTest,
                         ::testing::Values(AdjustRow{"CurrentSize", {800, 900}, {0, 0}},
                                           AdjustRow{"Zero", {0, 0}, {700, 700}},
                                           AdjustRow{"NarrowOnly", {300, 900}, {700, 900}},
                                           AdjustRow{"LowOnly", {900, 300}, {900, 700}},
                                           AdjustRow{"Larger", {1000, 1000}, {1000, 1000}}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(WindowImplTest, TitleSuffixReplacesTheLastOne) {
    auto window = Open();
    SDL_Window* sdl = Probe::SdlWindowOf(window->GetNativeHandle());
    window->SetTitleSuffix("60 fps");
    EXPECT_STREQ(SDL_GetWindowTitle(sdl), "Game - 60 fps");
    window->SetTitleSuffix("");
    EXPECT_STREQ(SDL_GetWindowTitle(sdl), "Game");
}

TEST_F(WindowImplTest, InstanceExtensionsForX11) {
    const Window::InstanceExtensions extensions = Open()->GetInstanceExtensions();
    ASSERT_EQ(extensions.count, 2U);
    const std::set<std::string> names(extensions.names.get(), extensions.names.get() + 2);
    EXPECT_EQ(names, (std::set<std::string>{"VK_KHR_surface", "VK_KHR_xlib_surface"}));
}

TEST_F(WindowImplTest, NativeHandleIsTheSdlWindowsOwn) {
    auto window = Open();
    EXPECT_NE(window->GetNativeHandle(), 0U);
    EXPECT_NE(Probe::SdlWindowOf(window->GetNativeHandle()), nullptr);
}

TEST_F(WindowImplTest, MissingLogStopsCreationBeforeSdl) {
    Zenk::UnregisterInstance<Common::Log::SMessageLog>();
    EXPECT_THROW(Open(), Zenk::MissingInstance);
    EXPECT_EQ(SDL_GetWindowFromID(1), nullptr);
    Zenk::RegisterInstance<Common::Log::SMessageLog>(log);
}

// The host broke the order and took the services away first: the window still closes and lets
// nothing out; the steps that need a missing service are skipped.
TEST_F(WindowImplTest, DestructionWithoutServicesStillClosesTheWindow) {
    auto window = Open();
    const Window::NativeHandle handle = window->GetNativeHandle();
    Zenk::UnregisterInstance<Common::Config::SConfigFile>();
    Zenk::UnregisterInstance<Common::Log::SMessageLog>();
    window.Reset();
    EXPECT_EQ(Probe::SdlWindowOf(handle), nullptr);
    EXPECT_EQ(log.lines.size(), 1U);
    EXPECT_TRUE(config.writes.empty());
    Zenk::RegisterInstance<Common::Config::SConfigFile>(config);
    Zenk::RegisterInstance<Common::Log::SMessageLog>(log);
}

} // namespace
