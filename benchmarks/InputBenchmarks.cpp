// What the collector costs on its hot paths, beside what SDL itself costs for the same events.
// Run with SDL_VIDEODRIVER=dummy (./dev bench does).

#include "input/InputCollectorImpl.h"

#include <SDL.h>
#include <benchmark/benchmark.h>

#include <InputServices.h>
#include <vector>

namespace {

using Window::InputCollectorImpl;

// SDL running, the host services registered, one collector for the whole run.
struct Environment : Fakes::InputServices {
    Environment() {
        SDL_Init(SDL_INIT_VIDEO);
        SDL_StopTextInput();
    }
    ~Environment() { SDL_Quit(); }

    InputCollectorImpl collector;
};

Environment& Shared() {
    static Environment environment;
    return environment;
}

void PushKeys(int count, Uint32 type = SDL_KEYDOWN) {
    SDL_Event event{};
    event.type = type;
    event.key.keysym.sym = SDLK_a;
    for (int i = 0; i < count; ++i)
        SDL_PushEvent(&event);
}

constexpr int batch = 1000;

// The floor: SDL's poll alone, for a batch of waiting key events.
void SdlPollFloor(benchmark::State& state) {
    Shared();
    SDL_Event event;
    for (auto _ : state) {
        state.PauseTiming();
        PushKeys(batch);
        state.ResumeTiming();
        while (SDL_PollEvent(&event) != 0)
            benchmark::DoNotOptimize(event);
    }
    state.SetItemsProcessed(state.iterations() * batch);
}
BENCHMARK(SdlPollFloor);

// Polling into the queues: SDL's poll plus a type test and one copy per event.
void QueryInputEvents(benchmark::State& state) {
    Environment& environment = Shared();
    for (auto _ : state) {
        state.PauseTiming();
        PushKeys(batch);
        state.ResumeTiming();
        environment.collector.QueryInputEvents();
        state.PauseTiming();
        environment.collector.Tick(); // empties the queue; not measured
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * batch);
}
BENCHMARK(QueryInputEvents);

// One tick delivering a batch of presses and releases to N key reactors of one priority each.
void TickKeyWalk(benchmark::State& state) {
    Environment& environment = Shared();
    std::vector<Zenk::IntrudablePointer<Window::IKeyReactor>> reactors;
    for (int i = 0; i < state.range(0); ++i) {
        reactors.push_back(
            environment.collector.CreateKeyReactor(Window::Key::A, static_cast<unsigned short>(i)));
        reactors.back()->SetPressCallback([](std::set<Window::Mode>) { return false; });
    }
    for (auto _ : state) {
        state.PauseTiming();
        for (int i = 0; i < batch / 2; ++i) {
            PushKeys(1, SDL_KEYDOWN);
            PushKeys(1, SDL_KEYUP);
        }
        environment.collector.QueryInputEvents();
        state.ResumeTiming();
        environment.collector.Tick();
    }
    state.SetItemsProcessed(state.iterations() * batch);
}
BENCHMARK(TickKeyWalk)->Arg(1)->Arg(8)->Arg(64);

// Dropping a reactor: six removal tasks on worker threads, one per registry.
void RemoveReactor(benchmark::State& state) {
    Environment& environment = Shared();
    for (auto _ : state) {
        auto reactor = environment.collector.CreateKeyReactor(Window::Key::B, 0);
        reactor.Reset();
    }
}
BENCHMARK(RemoveReactor)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
