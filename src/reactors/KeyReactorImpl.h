// SPDX-License-Identifier: Zlib
#pragma once

#include "reactors/ReactorID.h"

#include <window/Reactors.h>

namespace Window {

/// A key reactor: three callbacks on one `Key`, called by priority at its own modal level.
class KeyReactorImpl : public ReactorID, public IKeyReactor {
public:
    void SetReleaseCallback(KeyCallback callback) override;
    void SetPressCallback(KeyCallback callback) override;
    void SetHoldCallback(KeyCallback callback) override;
    void ClearAllCallbacks() override;

private:
    friend class InputCollectorImpl;

    KeyReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel);
    ~KeyReactorImpl() override;

    KeyCallback releaseCallback;
    KeyCallback holdCallback;
    KeyCallback pressCallback;
};

} // namespace Window
