// A real window, stood up by the bootstrap with the library's own entry points, saving its state
// through the host kit's configuration file. Needs a window system with a Vulkan driver.
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

} // namespace
