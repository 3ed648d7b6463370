// SPDX-License-Identifier: Zlib
#pragma once

#include "reactors/ReactorID.h"

#include <window/Reactors.h>

namespace Window {

/// A window reactor: hears of one window event, at every modal level, in creation order.
class WindowReactorImpl : public IWindowReactor, public ReactorID {
public:
    void SetCallback(WindowEventCallback callback) override;
    void ClearAllCallbacks() override;

private:
    friend class InputCollectorImpl;

    WindowReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel);
    ~WindowReactorImpl() override;

    WindowEventCallback callback;
};

} // namespace Window
