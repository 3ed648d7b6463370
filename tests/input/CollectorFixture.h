// SPDX-License-Identifier: Zlib
#pragma once

#include "CollectorProbe.h"
#include "InputServices.h"
#include "SdlEvents.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <memory>

namespace Window {

// The tests push their events with the shared builders (tests/support/SdlEvents.h).
using SdlEvents::MakeKey;
using SdlEvents::MakeOfType;
using SdlEvents::Press;
using SdlEvents::Push;
using SdlEvents::PushButton;
using SdlEvents::PushKey;
using SdlEvents::PushMotion;
using SdlEvents::PushText;
using SdlEvents::PushWheel;
using SdlEvents::PushWindow;
using SdlEvents::Release;

// SDL's real event queue under the dummy video driver (no display needed), the host services as
// fakes, and a collector made directly so that each test has a fresh one.
class CollectorFixture : public ::testing::Test, protected Fakes::InputServices {
protected:
    void SetUp() override {
        SDL_setenv("SDL_VIDEODRIVER", "dummy", 1);
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        // SDL starts with its own text input on; the collector's gate is what is under test.
        SDL_StopTextInput();
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }

    void TearDown() override {
        collector.reset();
        SDL_Quit();
    }

    // Polls SDL into the queues (cursor motion is dispatched here), then runs `ticks` ticks.
    void Deliver(int ticks = 1) {
        collector->QueryInputEvents();
        frames.Tick(ticks);
    }

    void SetLevel(unsigned char level) {
        while (probe.modalLevel() < level)
            collector->PushModalLevel();
        while (probe.modalLevel() > level)
            collector->PopModalLevel();
    }

    std::unique_ptr<InputCollectorImpl> collector = std::make_unique<InputCollectorImpl>();
    CollectorProbe probe{*collector};
};

} // namespace Window
