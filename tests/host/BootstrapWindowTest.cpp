// SPDX-License-Identifier: Zlib
// A real window, stood up by the bootstrap with the library's own entry points, saving its state
// through the host kit's configuration file. Needs a window system with a Vulkan driver.
#include "ForeignLocale.h"
#include "HostTest.h"

#include <host/Bootstrap.h>

namespace {

using BootstrapWindowTest = HostTests::FolderTest;

TEST_F(BootstrapWindowTest, WindowUsesTheHandEditedSizeAndWritesItsStateBack) {
    const auto config = folder / "config" / "engine.toml";
    HostTests::Store(config, "# edited by hand\n[Window]\nResolution = \"{900,800}\"\n");
    static Window::SInputCollector* collector = nullptr; // lives to the end of the process
    {
        Host::Bootstrap bootstrap({config, {false, folder / "engine.log"}},
                                  {&Window::ManufactureWindowFactory,
                                   [] { return collector = Window::ManufactureInputCollector(); }});
        auto window = bootstrap.WindowFactory().CreateWindow();
        EXPECT_EQ(window->GetResolution().width, 900);
        EXPECT_EQ(window->GetResolution().height, 800);
    }
    Host::ConfigFile saved(config);
    EXPECT_EQ(saved.ReadText("Window/Resolution", ""), "{900,800}");
    EXPECT_EQ(saved.ReadInteger("Window/FullScreen", -1), 0);
}

class BootstrapWindowLocaleTest : public HostTests::FolderTest,
                                  public ::testing::WithParamInterface<Fakes::ForeignLocale> {};

// An engine that sets a global locale grouping digits (or with a decimal comma) closes its window
// and opens it again (a process starts the window system once): the state it saved reads back, and
// nothing else in the file changed shape.
TEST_P(BootstrapWindowLocaleTest, SavedStateReadsBackWhenTheWindowOpensAgain) {
    const Fakes::ScopedGlobalLocale global(GetParam());
    const auto config = folder / "engine.toml";
    HostTests::Store(config, "[Window]\nResolution = \"{1280,1024}\"\nFullScreen = 0\n"
                             "[Window.Input]\nPollRate = 1000\n");
    Host::Bootstrap bootstrap({config, {false, folder / "engine.log"}},
                              Host::WindowLibraryEntryPoints());
    for (int opening = 1; opening <= 2; ++opening) {
        SCOPED_TRACE("opening " + std::to_string(opening));
        auto window = bootstrap.WindowFactory().CreateWindow();
        EXPECT_EQ(window->GetResolution().width, 1280);
        EXPECT_EQ(window->GetResolution().height, 1024);
        window.Reset(); // writes the state back
        Host::ConfigFile saved(config);
        EXPECT_EQ(saved.ReadText("Window/Resolution", ""), "{1280,1024}");
        EXPECT_EQ(saved.ReadInteger("Window/FullScreen", -1), 0);
        EXPECT_EQ(saved.ReadInteger("Window/Input/PollRate", -1), 1000);
    }
}

INSTANTIATE_TEST_SUITE_P(Locales, BootstrapWindowLocaleTest,
                         ::testing::ValuesIn(Fakes::foreignLocales),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
