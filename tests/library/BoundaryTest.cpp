// SPDX-License-Identifier: Zlib
// A host that sees the library only through libwindow.so: the exceptions must be caught by their
// types across the module boundary, which fails when their type information is not shared.
// Runs with SDL's dummy video driver: no window is needed to reach these failures.

#include <common/ApplicationErrorException.h>
#include <window/Manufacture.h>
#include <zenkbase/missing_instance.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(BoundaryTest, LibraryFailureIsCaughtAsApplicationError) {
    std::unique_ptr<Window::SWindowFactory> factory(Window::ManufactureWindowFactory());
    try {
        Window::ManufactureWindowFactory();
        FAIL() << "a second factory was made";
    } catch (const Common::ApplicationErrorException& error) {
        EXPECT_STREQ(error.what(), "Multiple instances of SWindowFactory");
    }
    try {
        Window::ManufactureInputCollector(); // no factory registered
    } catch (const Common::ApplicationErrorException& error) {
        const Common::ApplicationErrorException copy = error; // a host may keep one
        EXPECT_EQ(copy.message, "SDL not initialized!");
        EXPECT_STREQ(copy.what(), "SDL not initialized!");
    }
}

TEST(BoundaryTest, MissingServiceIsCaughtAsMissingInstance) {
    std::unique_ptr<Window::SWindowFactory> factory(Window::ManufactureWindowFactory());
    try {
        factory->CreateWindow();
        FAIL() << "a window was made without a configuration file";
    } catch (const Zenk::MissingInstance& missing) {
        EXPECT_EQ(missing.message, "ERROR: zenkbase\\singleton:__LINE__ No instance!");
    }
}

} // namespace
