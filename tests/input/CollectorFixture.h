// SPDX-License-Identifier: Zlib
#pragma once

#include "CollectorProbe.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <InputServices.h>
#include <cstring>
#include <memory>
#include <string>

namespace Window {

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

    static void Push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 1) << SDL_GetError(); }

    static void PushKey(Uint32 type, SDL_Keycode sym, Uint8 repeat = 0) {
        SDL_Event event{};
        event.type = type;
        event.key.keysym.sym = sym;
        event.key.repeat = repeat;
        event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
        Push(event);
    }
    static void Press(SDL_Keycode sym) { PushKey(SDL_KEYDOWN, sym); }
    static void Release(SDL_Keycode sym) { PushKey(SDL_KEYUP, sym); }

    static void PushButton(Uint32 type, Uint8 button, Uint8 clicks = 1) {
        SDL_Event event{};
        event.type = type;
        event.button.button = button;
        event.button.clicks = clicks;
        Push(event);
    }

    static void PushWheel(Sint32 y, Sint32 x = 0) {
        SDL_Event event{};
        event.type = SDL_MOUSEWHEEL;
        event.wheel.y = y;
        event.wheel.x = x;
        Push(event);
    }

    static void PushMotion(Sint32 x, Sint32 y) {
        SDL_Event event{};
        event.type = SDL_MOUSEMOTION;
        event.motion.x = x;
        event.motion.y = y;
        Push(event);
    }

    static void PushText(const std::string& utf8, Uint32 type = SDL_TEXTINPUT) {
        SDL_Event event{};
        event.type = type;
        std::strncpy(event.text.text, utf8.c_str(), sizeof event.text.text - 1);
        Push(event);
    }

    static void PushWindow(Uint8 windowEvent) {
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.event = windowEvent;
        Push(event);
    }

    std::unique_ptr<InputCollectorImpl> collector = std::make_unique<InputCollectorImpl>();
    CollectorProbe probe{*collector};
};

} // namespace Window
