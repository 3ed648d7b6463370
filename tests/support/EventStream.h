// SPDX-License-Identifier: Zlib
#pragma once

#include "CollectorProbe.h"

#include <zenkbase/intrudable_pointer.h>

#include <functional>
#include <set>
#include <stdexcept>
#include <vector>

class FuzzedDataProvider;

namespace Fakes {
class ManualFrameUtility;
}

namespace Window {

/// A stream of input read from bytes as a program, the one that the input_events fuzz harness
/// and the re-entry stress test both run: each step takes a few bytes and pushes an SDL event
/// into SDL's real queue, makes or drops a reactor, polls, fires the ticker, switches text input
/// or changes the modal level. Each callback that runs takes the next bytes for its own action:
/// it makes or drops reactors (itself included), replaces, clears or empties callbacks (its own
/// or another's, perhaps running too), switches text input, changes the modal level, polls again
/// with events of its own, or drops every reactor at once.
///
/// Two promises of the collector are checked besides whatever a sanitizer sees: a dropped
/// reactor is never called again, and once every reactor is gone no registry holds one.
///
/// The bytes come from libFuzzer in the harness and from a seeded generator in the test, through
/// the same FuzzedDataProvider: the same bytes make the same program in either. With the
/// environment variable INPUT_EVENTS_TRACE set, each step and each callback's action is told on
/// stderr: the way to read a reproducer.
class EventStream {
public:
    /// A promise of the collector broken, with what was seen.
    class Violation : public std::logic_error {
    public:
        using std::logic_error::logic_error;
    };

    /// Reads its steps from `bytes` and drives `collector`, whose frame utility is `frames` (the
    /// stream fires its tickers). All three must outlive the stream; SDL's video must be
    /// initialised. SDL's thread.
    EventStream(FuzzedDataProvider& bytes, InputCollectorImpl& collector,
                Fakes::ManualFrameUtility& frames);
    ~EventStream() = default;
    EventStream(const EventStream&) = delete;
    EventStream& operator=(const EventStream&) = delete;

    /// Runs steps until the bytes are used up, then drops every reactor and checks the
    /// registries. The collector's documented failures end a step, not the run: a text that does
    /// not decode, a 256th modal level, an emptied callback that a walk reaches (counted by
    /// EmptyCalls). SDL's thread. Throws Violation "a dropped reactor was called (reactor <n>)"
    /// or "a <kind> outlived its handles"; std::runtime_error when SDL refuses an event.
    void Run();

    /// How many callbacks ran.
    [[nodiscard]] long Calls() const { return calls; }
    /// How many walks an emptied callback ended (std::bad_function_call).
    [[nodiscard]] long EmptyCalls() const { return emptyCalls; }

private:
    // What a reactor's callbacks are set to: acting ones, the defaults (cleared), or empty
    // functions, which throw when a dispatch reaches them.
    enum class Callbacks { Acting, Defaults, Empty };

    // A reactor of the pool: the pool holds its only handle, so erasing the slot kills it.
    struct Slot {
        int token;
        Zenk::IntrudablePointer<Zenk::Intrudable> handle;
        std::function<void(Callbacks)> set;
    };

    template <class Action> void Guarded(Action action);
    void Step();

    void PushKey();
    void PushText();
    void PushMotion();
    void PushButton();
    void PushWheel();
    void PushWindowEvent();

    void Tick(int count);
    void SwitchTextInput();
    void ChangeModalLevel();

    bool Act(int token);
    void PollAgain();
    Slot* Chosen();
    Slot* WithToken(int token);
    void Drop(std::size_t index);
    void DropChosen();
    void DropToken(int token);
    template <class Interface, class Set>
    void Keep(Zenk::IntrudablePointer<Interface> handle, Set set);
    unsigned short Priority();
    template <class Enumeration> Enumeration Pick(std::uint32_t last);
    void MakeReactor();
    void CheckRegistriesEmpty();

    FuzzedDataProvider& bytes;
    InputCollectorImpl& collector;
    Fakes::ManualFrameUtility& frames;
    CollectorProbe probe;
    std::vector<Slot> pool;
    std::set<int> dead;
    int nextToken = 0;
    int pollDepth = 0;
    long calls = 0;
    long emptyCalls = 0;
};

} // namespace Window
