#include "display/ConfigurationKeys.h"

#include <gtest/gtest.h>

namespace {

// The names and defaults are what the engine's configuration files hold between runs; the text
// defaults are built by another file's function while the library loads, so an empty one here
// would mean an initialisation-order fault.
TEST(ConfigurationKeysTest, NamesAndDefaultsAreTheStoredOnes) {
    EXPECT_EQ(Window::PollRateKey.name, "Window/Input/PollRate");
    EXPECT_EQ(Window::PollRateKey.fallback, 60);
    EXPECT_EQ(Window::ResolutionKey.name, "Window/Resolution");
    EXPECT_EQ(Window::ResolutionKey.fallback, "{1000,1000}");
    EXPECT_EQ(Window::FullScreenKey.name, "Window/FullScreen");
    EXPECT_EQ(Window::FullScreenKey.fallback, 0);
    EXPECT_EQ(Window::LookSensitivityKey.name, "Mouse/LookSensitivity");
    EXPECT_EQ(Window::LookSensitivityKey.fallback, "{2500,2500}");
    EXPECT_EQ(Window::InvertedVerticalKey.name, "Mouse/InvertedVertical");
    EXPECT_EQ(Window::InvertedVerticalKey.fallback, 0);
}

} // namespace
