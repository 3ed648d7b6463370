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
/// the hold callbacks of everything held.
///
/// Threads: nothing here takes a lock. `QueryInputEvents`, the ticks, the Create operations and
/// `RemoveReactor` must never overlap: call them on the thread that pumps the frame utility, or
/// serialise them. Made once per process by `ManufactureInputCollector`, never destroyed by the
/// library; it must outlive every reactor.
struct SInputCollector {
    /// Polls every waiting event and sorts it into the queues; makes the ticker on the first call.
    /// Throws `Zenk::MissingInstance` (before polling) without a registered frame utility or
    /// configuration file; passes on whatever a cursor tracer's callback throws.
    virtual void QueryInputEvents() = 0;

    // --- reactors; each handle is owned by the caller, the reactor dies with its last handle.
    // Each throws `Zenk::MissingInstance` without a registered runtime unique id generator. ---

    /// Window reactors of one event are called in creation order, at every modal level.
    virtual Zenk::IntrudablePointer<IWindowReactor> CreateWindowReactor(WindowEvent event) = 0;
    /// Key reactors are called by ascending priority (0 first), ties in creation order.
    virtual Zenk::IntrudablePointer<IKeyReactor> CreateKeyReactor(Key key,
                                                                  unsigned short priority) = 0;
    /// Button reactors are called by ascending priority, ties in creation order.
    virtual Zenk::IntrudablePointer<IButtonReactor>
    CreateButtonReactor(Button button, unsigned short priority) = 0;
    /// Text reactors are called in ascending order of their ids.
    virtual Zenk::IntrudablePointer<ITextReactor> CreateTextReactor() = 0;
    /// Cursor tracers are called by ascending priority, ties in creation order.
    virtual Zenk::IntrudablePointer<ICursorTracer> CreateCursorTracer(unsigned short priority) = 0;
    /// Mode reactors of one modifier are called in creation order.
    virtual Zenk::IntrudablePointer<IModeReactor> CreateModeReactor(Mode mode) = 0;

    // --- modal levels: key, mode and text reactors answer only at the level they were made at ---

    /// Enters the next modal level and returns it. Called inside a callback, it takes effect at
    /// once: the rest of the running walk compares reactors with the new level. At 255 throws
    /// `Common::ApplicationErrorException` ("Too many modal windows") and stays at 255.
    virtual unsigned char PushModalLevel() = 0;
    /// Leaves the current modal level and returns the new one; at 0 it stays at 0.
    virtual unsigned char PopModalLevel() = 0;

    /// Takes the reactor with `id` out of every registry; an unknown id is no error. Reactors call
    /// it themselves when they die, so the engine never needs to.
    virtual void RemoveReactor(long long id) = 0;

    // --- text input: while on, the keyboard reaches reactors as text, except Backspace ---

    /// Switches text input on. What was queued before still arrives as it was.
    virtual void StartTextInput() = 0;
    /// Switches text input off.
    virtual void StopTextInput() = 0;
};

} // namespace Window
