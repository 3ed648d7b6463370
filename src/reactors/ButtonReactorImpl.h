// SPDX-License-Identifier: Zlib
#pragma once

#include "reactors/ReactorID.h"

#include <window/Reactors.h>

namespace Window {

/// A button reactor: three callbacks on one mouse button or wheel direction, by priority, at
/// every modal level. The interface comes first in this class, the identity second.
class ButtonReactorImpl : public IButtonReactor, public ReactorID {
public:
    void SetPressCallback(ButtonCallback callback) override;
    void SetReleaseCallback(ButtonCallback callback) override;
    void SetHoldCallback(ButtonCallback callback) override;
    void ClearAllCallbacks() override;

private:
    friend class InputCollectorImpl;

    ButtonReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel);
    ~ButtonReactorImpl() override;

    ButtonCallback releaseCallback;
    ButtonCallback holdCallback;
    ButtonCallback pressCallback;
};

} // namespace Window
