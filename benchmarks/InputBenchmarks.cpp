// SPDX-License-Identifier: Zlib
// The collector's hot paths, each beside its floor: the same work written by hand, measured in
// the same run. Google Benchmark runs the repetitions of all of them in random order, so the
// floor and the library share whatever load the machine is under; the table compares medians.
// Run with SDL_VIDEODRIVER=dummy (./dev bench does). Extra arguments go to Google Benchmark.

#include "CollectorProbe.h"
#include "InputServices.h"
#include "RatioReporter.h"
#include "SdlEvents.h"
#include "input/InputCollectorImpl.h"

#include <SDL.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <future>
#if !defined(_WIN32)
#include <malloc.h>
#endif
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Window::CollectorProbe;
using Window::InputCollectorImpl;
using Window::Key;
using Window::Mode;

// SDL running and the host services registered, for the whole run.
struct Environment : Fakes::InputServices {
    Environment() {
        SDL_Init(SDL_INIT_VIDEO);
        SDL_StopTextInput();
    }
    ~Environment() { SDL_Quit(); }
};

Environment& Shared() {
    static Environment environment;
    return environment;
}

// What reading the clock twice costs, taken off every timed interval: the shortest paths here
// last a few dozen nanoseconds, about as long as the two readings.
Clock::duration ClockCost() {
    static const Clock::duration cost = [] {
        std::vector<Clock::duration> samples(20001);
        for (auto& sample : samples) {
            const auto start = Clock::now();
            sample = Clock::now() - start;
        }
        std::nth_element(samples.begin(), samples.begin() + 10000, samples.end());
        return samples[10000];
    }();
    return cost;
}

// Times `work` alone, `samples` times, each after its `setup`, and gives Google Benchmark the
// median as this iteration's time (one iteration stands for `samples` runs of `work`): on a
// loaded machine a sample that the scheduler interrupts is thousands of times too long, and a
// mean would carry it. A floor with no setup runs `repeat` times per sample, which keeps the
// reading of the clock small beside it.
template <class Setup, class Work>
void Sampled(benchmark::State& state, int samples, Setup&& setup, Work&& work, int repeat = 1) {
    std::vector<Clock::duration> times(static_cast<std::size_t>(samples));
    for (auto& time : times) {
        setup();
        const auto start = Clock::now();
        for (int i = 0; i < repeat; ++i)
            work();
        time = std::max(Clock::now() - start - ClockCost(), Clock::duration::zero()) / repeat;
    }
    const auto middle = times.begin() + samples / 2;
    std::nth_element(times.begin(), middle, times.end());
    state.SetIterationTime(std::chrono::duration<double>(*middle).count() * samples);
}

// Samples per iteration: many for the paths of a few hundred nanoseconds, few for the others.
constexpr int fastSamples = 31;
constexpr int slowSamples = 11;

// Polling: a batch of key events waiting in SDL, taken into the key queue.
constexpr int pollBatch = 1000;

void PushKeys() {
    SDL_Event event = SdlEvents::MakeKey(SDL_KEYDOWN, SDLK_a);
    for (int i = 0; i < pollBatch; ++i)
        SDL_PushEvent(&event);
}

void PollFloor(benchmark::State& state) {
    Shared();
    std::vector<SDL_Event> events;
    for (auto _ : state) {
        Sampled(
            state, slowSamples,
            [&] {
                events.clear();
                PushKeys();
            },
            [&] {
                SDL_Event event;
                while (SDL_PollEvent(&event) != 0)
                    events.push_back(event);
            });
    }
}

void PollLibrary(benchmark::State& state) {
    Shared();
    InputCollectorImpl collector;
    CollectorProbe probe(collector);
    collector.QueryInputEvents(); // makes the ticker, once
    for (auto _ : state) {
        Sampled(
            state, slowSamples,
            [&] {
                probe.keyEvents().clear();
                PushKeys();
            },
            [&] { collector.QueryInputEvents(); });
    }
}

// The press tick: one press of A reaches N key reactors of one priority, which the tick calls
// N times with the press and then N times with the hold. The floor makes the same 2N calls
// by hand, each with a copy of the held modifiers.
// NOLINTNEXTLINE(performance-unnecessary-value-param): the copy is what the floor measures
bool Pass(std::set<Mode>) {
    return false;
}

std::set<Mode> Held(bool shift) {
    return shift ? std::set<Mode>{Mode::LeftShift} : std::set<Mode>{};
}

void PressFloor(benchmark::State& state, int reactors, bool shift) {
    const std::vector<Window::KeyCallback> press(static_cast<std::size_t>(reactors), Pass);
    const std::vector<Window::KeyCallback> hold(static_cast<std::size_t>(reactors), Pass);
    const std::set<Mode> held = Held(shift);
    for (auto _ : state) {
        Sampled(
            state, fastSamples, [] {},
            [&] {
                for (const auto& callback : press)
                    benchmark::DoNotOptimize(callback(held));
                for (const auto& callback : hold)
                    benchmark::DoNotOptimize(callback(held));
            },
            16);
    }
}

void PressLibrary(benchmark::State& state, int reactors, bool shift) {
    Shared();
    InputCollectorImpl collector;
    CollectorProbe probe(collector);
    std::vector<Zenk::IntrudablePointer<Window::IKeyReactor>> handles;
    for (int i = 0; i < reactors; ++i) {
        handles.push_back(collector.CreateKeyReactor(Key::A, 0));
        handles.back()->SetPressCallback(Pass);
        handles.back()->SetHoldCallback(Pass);
    }
    probe.heldModes() = Held(shift);
    const SDL_Event press = SdlEvents::MakeKey(SDL_KEYDOWN, SDLK_a);
    for (auto _ : state) {
        Sampled(
            state, fastSamples,
            [&] {
                probe.heldKeys().clear(); // a new press, not one of a key already held
                probe.keyEvents().push_back(press);
            },
            [&] { collector.Tick(); });
    }
}

// Removal: a key reactor dropped while others of every kind are registered, against the six
// bare tasks that any removal starts.
void RemoveFloor(benchmark::State& state) {
    for (auto _ : state) {
        Sampled(
            state, slowSamples, [] {},
            [] {
                const auto task = [] {};
                const std::future<void> tasks[] = {
                    std::async(std::launch::async, task), std::async(std::launch::async, task),
                    std::async(std::launch::async, task), std::async(std::launch::async, task),
                    std::async(std::launch::async, task), std::async(std::launch::async, task)};
            });
    }
}

void RemoveLibrary(benchmark::State& state, int registered) {
    Shared();
    InputCollectorImpl collector;
    std::vector<Zenk::IntrudablePointer<Zenk::Intrudable>> others;
    const Key keys[] = {Key::A, Key::B, Key::C, Key::D};
    for (int i = 0; others.size() < static_cast<std::size_t>(registered); ++i) {
        const auto priority = static_cast<unsigned short>(i % 7);
        switch (i % 6) {
        case 0:
            others.emplace_back(collector.CreateKeyReactor(keys[i % 4], priority));
            break;
        case 1:
            others.emplace_back(collector.CreateModeReactor(Mode::LeftShift));
            break;
        case 2:
            others.emplace_back(collector.CreateButtonReactor(Window::Button::Left, priority));
            break;
        case 3:
            others.emplace_back(collector.CreateCursorTracer(priority));
            break;
        case 4:
            others.emplace_back(collector.CreateTextReactor());
            break;
        default:
            others.emplace_back(collector.CreateWindowReactor(Window::WindowEvent::Close));
            break;
        }
    }
    Zenk::IntrudablePointer<Window::IKeyReactor> reactor;
    for (auto _ : state) {
        // Behind every other key reactor: its search is the longest there is.
        Sampled(
            state, slowSamples, [&] { reactor = collector.CreateKeyReactor(Key::D, 7); },
            [&] { reactor.Reset(); });
    }
}

#if !defined(_WIN32)
// Heap bytes that one more reactor of a kind costs: the object and its registry entries, with
// whatever the allocator adds, averaged over many on one input.
template <class Create> std::string HeapBytes(const char* kind, Create create, double target) {
    Shared();
    constexpr int count = 1000;
    InputCollectorImpl collector;
    std::vector<decltype(create(collector))> handles;
    handles.reserve(count);
    const auto before = mallinfo2().uordblks;
    for (int i = 0; i < count; ++i)
        handles.push_back(create(collector));
    const double bytes = static_cast<double>(mallinfo2().uordblks - before) / count;
    char line[120];
    std::snprintf(line, sizeof line, "heap bytes per %-14s %6.0f%s", kind, bytes,
                  target <= 0       ? ""
                  : bytes <= target ? "  (target <= 256)"
                                    : "  MISSED (<= 256)");
    return line;
}

#endif

std::vector<std::string> HeapNotes() {
#if defined(_WIN32)
    // The heap's bytes in use are read from glibc (mallinfo2).
    return {"heap bytes per reactor: measured on Linux"};
#else
    using namespace Window;
    return {
        HeapBytes(
            "key reactor", [](auto& c) { return c.CreateKeyReactor(Key::A, 0); }, 256),
        HeapBytes(
            "mode reactor", [](auto& c) { return c.CreateModeReactor(Mode::LeftShift); }, 0),
        HeapBytes(
            "button reactor", [](auto& c) { return c.CreateButtonReactor(Button::Left, 0); }, 0),
        HeapBytes(
            "cursor tracer", [](auto& c) { return c.CreateCursorTracer(0); }, 0),
        HeapBytes(
            "text reactor", [](auto& c) { return c.CreateTextReactor(); }, 0),
        HeapBytes(
            "window reactor", [](auto& c) { return c.CreateWindowReactor(WindowEvent::Close); }, 0),
    };
#endif
}

// Registers one floor and one library benchmark under the pair's name.
// `minTime` is measured time per repetition; the untimed set-up around it can take longer.
template <class Floor, class Library>
void Register(std::vector<Bench::Pair>& pairs, double minTime, Bench::Pair pair, Floor floor,
              Library library) {
    benchmark::RegisterBenchmark(("floor:" + pair.name).c_str(), floor)
        ->UseManualTime()
        ->MinTime(minTime);
    benchmark::RegisterBenchmark(("library:" + pair.name).c_str(), library)
        ->UseManualTime()
        ->MinTime(minTime);
    pairs.push_back(std::move(pair));
}

} // namespace

int main(int argc, char** argv) {
    // Defaults first, so that the caller's own flags, which come later, win.
    std::vector<char*> arguments{argv[0]};
    std::string defaults[] = {
        "--benchmark_repetitions=9", "--benchmark_enable_random_interleaving=true",
        "--benchmark_report_aggregates_only=true", "--benchmark_min_time=0.05"};
    for (std::string& flag : defaults)
        arguments.push_back(flag.data());
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;

    std::vector<Bench::Pair> pairs;
    Register(pairs, 0.005, {"poll, 1000 key events", pollBatch * slowSamples, "ns/ev", 1.10},
             PollFloor, PollLibrary);
    for (const bool shift : {false, true}) {
        for (const int reactors : {1, 16, 256}) {
            const double target = reactors != 16 ? 0 : shift ? 1.5 : 3.0;
            const std::string name = "press tick, " + std::to_string(reactors) +
                                     (reactors == 1 ? " reactor" : " reactors") +
                                     (shift ? ", Shift" : "");
            Register(
                pairs, 0.01, {name, fastSamples, "ns", target},
                [=](benchmark::State& state) { PressFloor(state, reactors, shift); },
                [=](benchmark::State& state) { PressLibrary(state, reactors, shift); });
        }
    }
    for (const int registered : {10, 1000, 10000}) {
        Register(pairs, 0.05,
                 {"remove, " + std::to_string(registered) + " registered", 1000 * slowSamples, "us",
                  registered == 10 ? 1.10 : 0},
                 RemoveFloor, [=](benchmark::State& state) { RemoveLibrary(state, registered); });
    }

    Bench::RatioReporter reporter(std::move(pairs), HeapNotes());
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.AllMet() ? 0 : 1;
}
