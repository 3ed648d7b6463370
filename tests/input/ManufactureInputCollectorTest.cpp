// SPDX-License-Identifier: Zlib
// Each test runs in a process of its own: the manufacture rule counts calls per process.

#include <common/ApplicationErrorException.h>
#include <window/Manufacture.h>

#include <SDL.h>
#include <gtest/gtest.h>

#include <ScopedInstance.h>
#include <string>

namespace Window {
namespace {

// Stands for the window factory: its registration is all the collector asks about.
struct RegisteredFactory : SWindowFactory {
    Zenk::IntrudablePointer<IWindow> CreateWindow() override { return {}; }
};

std::string MessageOf(SInputCollector* (*manufacture)()) {
    try {
        manufacture();
    } catch (const Common::ApplicationErrorException& error) {
        return error.what();
    }
    return "no exception";
}

TEST(ManufactureInputCollector, WithoutTheFactorySdlIsNotInitializedAndTheCallIsSpent) {
    EXPECT_EQ(MessageOf(ManufactureInputCollector), "SDL not initialized!");
    RegisteredFactory factory;
    Fakes::ScopedInstance<SWindowFactory> registration(factory);
    EXPECT_EQ(MessageOf(ManufactureInputCollector), "Multiple instances of SInputCollector");
}

TEST(ManufactureInputCollector, SucceedsOncePerProcessWithoutTouchingSdl) {
    RegisteredFactory factory;
    Fakes::ScopedInstance<SWindowFactory> registration(factory);
    static SInputCollector* collector = ManufactureInputCollector(); // lives until the process ends
    EXPECT_NE(collector, nullptr);
    EXPECT_EQ(SDL_WasInit(0), 0u) << "making the collector starts nothing";
    EXPECT_EQ(MessageOf(ManufactureInputCollector), "Multiple instances of SInputCollector");
}

} // namespace
} // namespace Window
