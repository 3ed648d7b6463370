// SPDX-License-Identifier: Zlib
#pragma once

#include <window/InputVocabulary.h>
#include <window/Reactors.h>
#include <zenkbase/intrudable_pointer.h>

namespace Window {

/// Collects the window system's input and delivers it to reactors.
///
/// Two beats: the engine calls `QueryInputEvents` at its own pace, which empties the event queue
/// into the collector's queues (cursor motion is delivered at once); a ticker of the frame
/// utility, made on the first such call with the period 1000000 / "Window/Input/PollRate"
/// microseconds, delivers the queues (keys, window events, buttons, text, in this order) and then
/// the hold callbacks of everything held. The whole contract: \ref reactors.
///
/// Threads: nothing here takes a lock. `QueryInputEvents`, the ticks, the Create operations and
/// `RemoveReactor` must never overlap: call them on the thread that pumps the frame utility, or
/// serialise them. Made once per process by `ManufactureInputCollector`, never destroyed by the
/// library; it must outlive every reactor.
struct SInputCollector {
    /// Polls every waiting event and sorts it into the queues; makes the ticker on the first call.
    /// Input thread; cursor tracers' callbacks run inside it. Throws `Zenk::MissingInstance`
    /// (before polling) without a registered frame utility or configuration file; passes on
    /// whatever a cursor tracer's callback throws.
    virtual void QueryInputEvents() = 0;

    // --- reactors: the caller owns the handle, never empty, and the reactor dies with its last
    // handle. Input thread or inside a callback. ---

    /// A reactor to `event`; window reactors of one event are called in creation order, at every
    /// modal level. The caller owns the handle. Throws `Zenk::MissingInstance` without a
    /// registered unique id generator.
    virtual Zenk::IntrudablePointer<IWindowReactor> CreateWindowReactor(WindowEvent event) = 0;
    /// A reactor to `key` at the current modal level; key reactors are called by ascending
    /// priority (0 first), ties in creation order. The caller owns the handle. Throws
    /// `Zenk::MissingInstance` without a registered unique id generator.
    virtual Zenk::IntrudablePointer<IKeyReactor> CreateKeyReactor(Key key,
                                                                  unsigned short priority) = 0;
    /// A reactor to `button`; button reactors are called by ascending priority, ties in creation
    /// order, at every modal level. The caller owns the handle. Throws `Zenk::MissingInstance`
    /// without a registered unique id generator.
    virtual Zenk::IntrudablePointer<IButtonReactor>
    CreateButtonReactor(Button button, unsigned short priority) = 0;
    /// A text reactor at the current modal level; text reactors are called in ascending order of
    /// their ids. The caller owns the handle. Throws `Zenk::MissingInstance` without a
    /// registered unique id generator.
    virtual Zenk::IntrudablePointer<ITextReactor> CreateTextReactor() = 0;
    /// A cursor tracer; tracers are called by ascending priority, ties in creation order, at
    /// every modal level. The caller owns the handle. Throws `Zenk::MissingInstance` without a
    /// registered unique id generator.
    virtual Zenk::IntrudablePointer<ICursorTracer> CreateCursorTracer(unsigned short priority) = 0;
    /// A reactor to `mode` at the current modal level; mode reactors of one modifier are called
    /// in creation order. The caller owns the handle. Throws `Zenk::MissingInstance` without a
    /// registered unique id generator.
    virtual Zenk::IntrudablePointer<IModeReactor> CreateModeReactor(Mode mode) = 0;

    // --- modal levels: key, mode and text reactors answer only at the level they were made at ---

    /// Enters the next modal level and returns it; input thread or inside a callback. Called
    /// inside a callback, it takes effect at once: the rest of the running walk compares reactors
    /// with the new level. At 255 throws `Common::ApplicationErrorException` ("Too many modal
    /// windows") and stays at 255.
    virtual unsigned char PushModalLevel() = 0;
    /// Leaves the current modal level and returns the new one; at 0 it stays at 0. Input thread
    /// or inside a callback; throws nothing.
    virtual unsigned char PopModalLevel() = 0;

    /// Takes the reactor with `id` out of every registry; an unknown id is no error. Reactors call
    /// it themselves when they die, so the engine never needs to. Input thread or inside a
    /// callback; it searches on worker threads and waits for them. Throws `std::system_error`
    /// when a worker thread cannot be started.
    virtual void RemoveReactor(long long id) = 0;

    // --- text input: while on, the keyboard reaches reactors as text, except Backspace ---

    /// Switches text input on. What was queued before still arrives as it was. Input thread or
    /// inside a callback; throws nothing.
    virtual void StartTextInput() = 0;
    /// Switches text input off. Input thread or inside a callback; throws nothing.
    virtual void StopTextInput() = 0;
};

} // namespace Window
