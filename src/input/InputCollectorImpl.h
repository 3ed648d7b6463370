// SPDX-License-Identifier: Zlib
#pragma once

#include <common/ITicker.h>
#include <window/SInputCollector.h>
#include <zenkbase/intrudable_pointer.h>

#include <SDL.h>

#include <array>
#include <map>
#include <set>
#include <vector>

namespace Window {

class KeyReactorImpl;
class ModeReactorImpl;
class TextReactorImpl;
class ButtonReactorImpl;
class CursorTracerImpl;
class WindowReactorImpl;

/// The input collector: polls SDL, queues events by kind, and on each tick of its ticker
/// delivers them to the reactors in its six registries.
///
/// The code is split by concept: this class's core (polling, queues, ticker, switches) in
/// InputCollectorImpl.cpp, key dispatch in KeyDispatch.cpp, mouse dispatch in MouseDispatch.cpp,
/// window-event and text dispatch in WindowTextDispatch.cpp, creation in Registries.cpp,
/// removal in Removal.cpp.
///
/// Re-entry. A callback may create reactors, drop the last handle of any reactor (itself
/// included), store a new or an empty function in any reactor's field, poll again or change the
/// modal level, while a walk runs over the registry that holds it. Three rules make that safe,
/// and none of them costs more than a few plain stores per call:
///  - While any walk runs (`walkDepth` > 0), removal does not erase an entry: it nulls the
///    pointer (a tombstone), so no iterator or index of a running walk is invalidated. Walks
///    skip null entries, and the outermost walk compacts the registries when it ends, by the
///    same erase rules that removal uses outside walks.
///  - Vectors are walked by index and re-read at each step, so an append that moves the vector's
///    storage does not strand the walk; map and multimap insertions invalidate nothing.
///  - The running function is lent out of its field into the call's frame (LentCallback.h), so
///    neither a setter nor the reactor's death can destroy it mid-call. The reactor is not
///    pinned: a setter, a clear or the reactor's destructor tells the frame through the stand-in
///    that the field holds meanwhile, and the frame then leaves the field alone. A callback that
///    drops its own reactor therefore returns normally; the reactor is gone at once, its entry
///    is a tombstone, and the lent function dies when the call returns.
/// The modal level is read at each step of a walk, like the registry: a reactor that a callback
/// makes at a level it has just pushed is reached by the same walk if it lies ahead.
class InputCollectorImpl final : public SInputCollector {
public:
    InputCollectorImpl() = default;
    InputCollectorImpl(const InputCollectorImpl&) = delete;
    InputCollectorImpl& operator=(const InputCollectorImpl&) = delete;
    ~InputCollectorImpl() = default;

    void QueryInputEvents() override;
    Zenk::IntrudablePointer<IWindowReactor> CreateWindowReactor(WindowEvent event) override;
    Zenk::IntrudablePointer<IKeyReactor> CreateKeyReactor(Key key,
                                                          unsigned short priority) override;
    Zenk::IntrudablePointer<IButtonReactor> CreateButtonReactor(Button button,
                                                                unsigned short priority) override;
    Zenk::IntrudablePointer<ITextReactor> CreateTextReactor() override;
    Zenk::IntrudablePointer<ICursorTracer> CreateCursorTracer(unsigned short priority) override;
    Zenk::IntrudablePointer<IModeReactor> CreateModeReactor(Mode mode) override;
    unsigned char PushModalLevel() override;
    unsigned char PopModalLevel() override;
    void RemoveReactor(long long id) override;
    void StartTextInput() override;
    void StopTextInput() override;

    /// Removal without worker threads: the six searches of `RemoveReactor`, one after the other
    /// on the calling thread. Cannot fail; used when a removal task cannot be started.
    void RemoveReactorInPlace(long long id) noexcept;

    /// One tick: the four drains in their fixed order, then the hold tick.
    void Tick();

private:
    friend class CollectorProbe; // tests look at the fields

    // The six registries, in the order removal starts its tasks.
    enum Registry { Cursors, Texts, Keys, Windows, Buttons, Modes, RegistryCount };

    // Counts the walks in progress; the outermost one compacts tombstones when it ends.
    class WalkScope {
    public:
        explicit WalkScope(InputCollectorImpl& collector) noexcept;
        ~WalkScope();
        WalkScope(const WalkScope&) = delete;
        WalkScope& operator=(const WalkScope&) = delete;

    private:
        InputCollectorImpl& collector;
    };

    // Key and modifier dispatch.
    void DrainKeyQueue();
    void DispatchKeyUp(const SDL_Event& event);
    void DispatchKeyDown(const SDL_Event& event);
    bool KeyWalk(Key key, KeyCallback KeyReactorImpl::*callback);
    void ModeCall(Mode mode, ModeCallback ModeReactorImpl::*callback);
    void HoldTick();

    // Mouse dispatch.
    void DispatchButtonDown(const SDL_Event& event);
    void DispatchButtonUp(const SDL_Event& event);
    void DrainButtonQueue();
    void DispatchCursor(const SDL_Event& event);
    bool ButtonWalk(Button button, ButtonCallback ButtonReactorImpl::*callback);

    // Window-event and text dispatch.
    void DrainWindowQueue();
    void DrainTextQueue();

    // Removal, one registry per call; each touches nothing but its own registry.
    void RemoveFrom(Registry registry, long long id) noexcept;
    void Compact() noexcept;

    std::vector<SDL_Event> keyEvents;
    std::vector<SDL_Event> textEvents;
    std::vector<SDL_Event> windowEvents;
    std::vector<SDL_Event> buttonEvents;
    Zenk::IntrudablePointer<Common::ITicker> ticker;
    std::set<Mode> heldModes;
    std::set<Key> heldKeys;
    std::set<Button> heldButtons;
    bool textInputOff = true;
    std::map<Key, std::multimap<unsigned short, KeyReactorImpl*>> keyReactors;
    std::map<Mode, std::vector<ModeReactorImpl*>> modeReactors;
    std::map<long long, TextReactorImpl*> textReactors;
    std::map<Button, std::multimap<unsigned short, ButtonReactorImpl*>> buttonReactors;
    std::multimap<unsigned short, CursorTracerImpl*> cursorTracers;
    std::map<WindowEvent, std::vector<WindowReactorImpl*>> windowReactors;
    unsigned char modalLevel = 0;

    // Re-entry bookkeeping (see the class comment). One flag per registry, so that the removal
    // tasks, each on its own registry, never write the same memory.
    unsigned int walkDepth = 0;
    std::array<bool, RegistryCount> tombstones{};
};

} // namespace Window
