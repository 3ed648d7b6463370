#include "display/WindowFactoryImpl.h"

#include "FakeConfigFile.h"
#include "RecordingMessageLog.h"
#include "ScopedInstance.h"
#include "WindowProbe.h"

#include <common/ApplicationErrorException.h>
#include <window/Manufacture.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace {

using Window::Resolution;

// Each case runs in a process of its own, so each may use the one factory of the process.
class WindowFactoryImplTest : public ::testing::Test {
protected:
    void SetUp() override { Probe::RequireDisplay(); }

    void Manufacture() { factory.reset(Window::ManufactureWindowFactory()); }

    Fakes::FakeConfigFile config;
    Fakes::RecordingMessageLog log;
    Fakes::ScopedInstance<Common::Config::SConfigFile> configEntry{config};
    Fakes::ScopedInstance<Common::Log::SMessageLog> logEntry{log};
    std::unique_ptr<Window::SWindowFactory> factory;
};

struct FloorRow {
    const char* name;
    const char* stored; // null: nothing stored
    Resolution created;
};

void PrintTo(const FloorRow& row, std::ostream* out) {
    *out << row.name;
}

class CreationFloorTest : public WindowFactoryImplTest,
                          public ::testing::WithParamInterface<FloorRow> {};

// Height decides first: a low window is raised whole, a narrow tall one only in width.
TEST_P(CreationFloorTest, CreatesAtTheFlooredSize) {
    if (GetParam().stored != nullptr)
        config.values["Window/Resolution"] = GetParam().stored;
    Manufacture();
    auto window = factory->CreateWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(window->GetResolution(), GetParam().created);
}

INSTANTIATE_TEST_SUITE_P(StoredSizes, CreationFloorTest,
                         ::testing::Values(FloorRow{"NothingStored", nullptr, {1000, 1000}},
                                           FloorRow{"Default", "{1000,1000}", {1000, 1000}},
                                           FloorRow{"LowAndWide", "{900,600}", {700, 700}},
                                           FloorRow{"NarrowAndTall", "{600,900}", {700, 900}},
                                           FloorRow{"JustTooNarrow", "{699,700}", {700, 700}},
                                           FloorRow{"WideAtMinimum", "{900,700}", {900, 700}},
                                           FloorRow{"Zero", "{0,0}", {700, 700}}),
                         [](const auto& info) { return std::string(info.param.name); });

struct FullScreenRow {
    const char* name;
    const char* stored;
    const char* saved;
};

void PrintTo(const FullScreenRow& row, std::ostream* out) {
    *out << row.name;
}

class StoredFullScreenTest : public WindowFactoryImplTest,
                             public ::testing::WithParamInterface<FullScreenRow> {};

// Only values above 0 mean full screen; the state is written back as "1" or "0".
TEST_P(StoredFullScreenTest, ComparesWithZero) {
    config.values["Window/FullScreen"] = GetParam().stored;
    Manufacture();
    factory->CreateWindow().Reset();
    EXPECT_EQ(config.values["Window/FullScreen"], GetParam().saved);
}

INSTANTIATE_TEST_SUITE_P(StoredValues, StoredFullScreenTest,
                         ::testing::Values(FullScreenRow{"Two", "2", "1"},
                                           FullScreenRow{"One", "1", "1"},
                                           FullScreenRow{"Zero", "0", "0"},
                                           FullScreenRow{"MinusOne", "-1", "0"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(WindowFactoryImplTest, EveryWindowIsSeparateAndCarriesTheProductTitle) {
    Manufacture();
    auto first = factory->CreateWindow();
    auto second = factory->CreateWindow();
    ASSERT_NE(first, second);
    EXPECT_STREQ(SDL_GetWindowTitle(Probe::SdlWindowOf(first->GetNativeHandle())),
                 "Tavrino. Version: 905");
    EXPECT_STREQ(SDL_GetWindowTitle(Probe::SdlWindowOf(second->GetNativeHandle())),
                 "Tavrino. Version: 905");
}

TEST_F(WindowFactoryImplTest, OnlyTheFirstManufactureSucceeds) {
    Manufacture();
    try {
        Window::ManufactureWindowFactory();
        FAIL() << "a second factory was made";
    } catch (const Common::ApplicationErrorException& error) {
        EXPECT_STREQ(error.what(), "Multiple instances of SWindowFactory");
    }
    // The refused call left the first factory and SDL as they were.
    EXPECT_TRUE(factory->CreateWindow());
}

TEST_F(WindowFactoryImplTest, NoSecondFactoryAfterTheFirstIsGoneAndSdlStaysDown) {
    Manufacture();
    factory.reset();
    ASSERT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
    EXPECT_THROW(Manufacture(), Common::ApplicationErrorException);
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
}

TEST_F(WindowFactoryImplTest, FailedStartReportsSdlAndUsesUpTheOneChance) {
    setenv("SDL_VIDEODRIVER", "nonexistent", 1);
    try {
        Manufacture();
        FAIL() << "SDL started with a driver that does not exist";
    } catch (const Common::ApplicationErrorException& error) {
        EXPECT_EQ(error.what(), std::string("Failed to initialize SDL: ") + SDL_GetError() + ".");
    }
    unsetenv("SDL_VIDEODRIVER");
    try {
        Manufacture();
        FAIL() << "a retry made a factory";
    } catch (const Common::ApplicationErrorException& error) {
        EXPECT_STREQ(error.what(), "Multiple instances of SWindowFactory");
    }
}

struct VulkanFailureRow {
    const char* name;
    const char* variable;
    const char* value;
    const char* reason; // how SDL's text begins
};

void PrintTo(const VulkanFailureRow& row, std::ostream* out) {
    *out << row.name;
}

class WindowCreationFailureTest : public WindowFactoryImplTest,
                                  public ::testing::WithParamInterface<VulkanFailureRow> {};

// SDL starts, but no Vulkan window can be made: the message carries SDL's reason and the
// configuration is left as it was.
TEST_P(WindowCreationFailureTest, ThrowsWithTheReasonAndWritesNothing) {
    setenv(GetParam().variable, GetParam().value, 1);
    config.values["Window/Resolution"] = "{800,800}";
    Manufacture();
    try {
        factory->CreateWindow();
        FAIL() << "a window was made without Vulkan";
    } catch (const Common::ApplicationErrorException& error) {
        // SDL's error text is overwritten since (the deleter met a null window), so the reason
        // is compared with the texts SDL is known to give for these two causes.
        const std::string expected =
            std::string("Failed to create window: Tavrino. Version: 905\n->\t") + GetParam().reason;
        EXPECT_EQ(std::string(error.what()).substr(0, expected.size()), expected);
    }
    EXPECT_TRUE(config.writes.empty());
    EXPECT_EQ(log.lines.size(), 1U) << "only the creation line; no window was destroyed";
}

INSTANTIATE_TEST_SUITE_P(
    Causes, WindowCreationFailureTest,
    ::testing::Values(VulkanFailureRow{"NoDriver", "VK_ICD_FILENAMES", "/nonexistent.json",
                                       "Installed Vulkan doesn't implement the VK_KHR_surface "
                                       "extension"},
                      VulkanFailureRow{"NoLoader", "SDL_VULKAN_LIBRARY", "libvulkan-missing.so.1",
                                       "Failed loading libvulkan-missing.so.1: "}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(WindowFactoryImplTest, MalformedStoredSizeFailsAndStaysStored) {
    config.values["Window/Resolution"] = "{800 600}";
    Manufacture();
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            factory->CreateWindow();
            FAIL() << "a window was made from a malformed size";
        } catch (const Common::ApplicationErrorException& error) {
            EXPECT_STREQ(error.what(), "Failed to read configuration key: Window/Resolution.");
        }
    }
    EXPECT_EQ(config.values["Window/Resolution"], "{800 600}");
    EXPECT_TRUE(config.writes.empty());
    EXPECT_TRUE(log.lines.empty());
}

TEST(WindowFactoryServicesTest, MissingConfigurationFileLeavesTheFactoryUsable) {
    Probe::RequireDisplay();
    Fakes::RecordingMessageLog log;
    Fakes::ScopedInstance<Common::Log::SMessageLog> logEntry{log};
    std::unique_ptr<Window::SWindowFactory> factory(Window::ManufactureWindowFactory());
    EXPECT_THROW(factory->CreateWindow(), Zenk::MissingInstance);

    Fakes::FakeConfigFile config;
    Fakes::ScopedInstance<Common::Config::SConfigFile> configEntry{config};
    EXPECT_TRUE(factory->CreateWindow());
}

} // namespace
