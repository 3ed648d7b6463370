// SPDX-License-Identifier: Zlib
// A stream of SDL events, made from the input, pushed into SDL's real queue and polled by a real
// collector, whose ticker is fired by hand between pushes; the reactors' callbacks, chosen by the
// input too, create and drop reactors (themselves included), replace or clear callbacks, switch
// text input, push and pop modal levels, and poll again. The stream is the shared driver of the
// test support (tests/support/EventStream.h), which the re-entry stress test runs on seeded
// bytes; its checks besides the sanitizers: a dropped reactor is never called again, and once
// every reactor is gone no registry holds one. With INPUT_EVENTS_TRACE set, each step is told.

#include "EventStream.h"
#include "InputServices.h"
#include "input/InputCollectorImpl.h"

#include <SDL.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fuzzer/FuzzedDataProvider.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Once per process, before the first input: SDL's queue with no display.
    static const bool ready = [] {
        SDL_setenv("SDL_VIDEODRIVER", "dummy", 1);
        return SDL_Init(SDL_INIT_VIDEO) == 0;
    }();
    if (!ready) {
        std::fprintf(stderr, "input_events: %s\n", SDL_GetError());
        std::abort();
    }
    // SDL starts with its own text input on; the collector's switch is what is exercised.
    SDL_StopTextInput();
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);

    FuzzedDataProvider bytes(data, size);
    Fakes::InputServices services;
    Window::InputCollectorImpl collector;
    try {
        Window::EventStream(bytes, collector, services.frames).Run();
    } catch (const std::exception& error) {
        // A broken promise (or SDL refusing an event): a finding, with its words.
        std::fprintf(stderr, "input_events: %s\n", error.what());
        std::abort();
    }
    return 0;
}
