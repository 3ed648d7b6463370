// SPDX-License-Identifier: Zlib
// Making reactors: each is stamped with the current modal level, handed out with one count, and
// entered in its registry as a plain pointer that owns nothing.

#include "input/InputCollectorImpl.h"
#include "reactors/ButtonReactorImpl.h"
#include "reactors/CursorTracerImpl.h"
#include "reactors/KeyReactorImpl.h"
#include "reactors/ModeReactorImpl.h"
#include "reactors/TextReactorImpl.h"
#include "reactors/WindowReactorImpl.h"

namespace Window {

// Each Create takes the handle before it registers: should registering run out of memory, the
// handle's release destroys the reactor by the normal sequence, and its removal finds no entry.

Zenk::IntrudablePointer<IWindowReactor> InputCollectorImpl::CreateWindowReactor(WindowEvent event) {
    Zenk::IntrudablePointer<WindowReactorImpl> reactor(new WindowReactorImpl(this, modalLevel));
    windowReactors[event].push_back(reactor.Get());
    return reactor;
}

Zenk::IntrudablePointer<IKeyReactor> InputCollectorImpl::CreateKeyReactor(Key key,
                                                                          unsigned short priority) {
    Zenk::IntrudablePointer<KeyReactorImpl> reactor(new KeyReactorImpl(this, modalLevel));
    // A multimap inserts behind the entries of equal priority: ties keep creation order.
    keyReactors[key].emplace(priority, reactor.Get());
    return reactor;
}

Zenk::IntrudablePointer<IButtonReactor>
InputCollectorImpl::CreateButtonReactor(Button button, unsigned short priority) {
    Zenk::IntrudablePointer<ButtonReactorImpl> reactor(new ButtonReactorImpl(this, modalLevel));
    buttonReactors[button].emplace(priority, reactor.Get());
    return reactor;
}

Zenk::IntrudablePointer<ITextReactor> InputCollectorImpl::CreateTextReactor() {
    Zenk::IntrudablePointer<TextReactorImpl> reactor(new TextReactorImpl(this, modalLevel));
    // Ids are unique; should one ever repeat, the older reactor keeps the entry.
    textReactors.emplace(reactor->id, reactor.Get());
    return reactor;
}

Zenk::IntrudablePointer<ICursorTracer>
InputCollectorImpl::CreateCursorTracer(unsigned short priority) {
    Zenk::IntrudablePointer<CursorTracerImpl> reactor(new CursorTracerImpl(this, modalLevel));
    cursorTracers.emplace(priority, reactor.Get());
    return reactor;
}

Zenk::IntrudablePointer<IModeReactor> InputCollectorImpl::CreateModeReactor(Mode mode) {
    Zenk::IntrudablePointer<ModeReactorImpl> reactor(new ModeReactorImpl(this, modalLevel));
    modeReactors[mode].push_back(reactor.Get());
    return reactor;
}

} // namespace Window
