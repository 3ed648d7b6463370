// SPDX-License-Identifier: Zlib
#pragma once

#include "input/InputCollectorImpl.h"

namespace Window {

// The tests' view of the collector's fields, which the library keeps private.
class CollectorProbe {
public:
    explicit CollectorProbe(InputCollectorImpl& collector) : c(collector) {}

    // Each accessor bears the name of the field it exposes, so that a test reads like the code
    // it checks.
    // NOLINTBEGIN(readability-identifier-naming)

    auto& keyReactors() { return c.keyReactors; }
    auto& modeReactors() { return c.modeReactors; }
    auto& textReactors() { return c.textReactors; }
    auto& buttonReactors() { return c.buttonReactors; }
    auto& cursorTracers() { return c.cursorTracers; }
    auto& windowReactors() { return c.windowReactors; }
    auto& heldKeys() { return c.heldKeys; }
    auto& heldModes() { return c.heldModes; }
    auto& heldButtons() { return c.heldButtons; }
    auto& keyEvents() { return c.keyEvents; }
    auto& textEvents() { return c.textEvents; }
    auto& windowEvents() { return c.windowEvents; }
    auto& buttonEvents() { return c.buttonEvents; }
    // No registry holds an entry, not even an empty container.
    bool registriesEmpty() const {
        return c.keyReactors.empty() && c.modeReactors.empty() && c.textReactors.empty() &&
               c.buttonReactors.empty() && c.cursorTracers.empty() && c.windowReactors.empty();
    }
    bool hasTicker() const { return static_cast<bool>(c.ticker); }
    unsigned char modalLevel() const { return c.modalLevel; }
    // NOLINTEND(readability-identifier-naming)

    // The id of a reactor, read through its identity as the collector does.
    template <class Impl> static long long IdOf(Impl* reactor) { return reactor->id; }

private:
    InputCollectorImpl& c;
};

} // namespace Window
