// SPDX-License-Identifier: Zlib
#pragma once

#include "reactors/ReactorID.h"

#include <window/Reactors.h>

namespace Window {

/// A mode reactor: three callbacks on one modifier key, at its own modal level; cannot consume.
class ModeReactorImpl : public ReactorID, public IModeReactor {
public:
    void SetReleaseCallback(ModeCallback callback) override;
    void SetPressCallback(ModeCallback callback) override;
    void SetHoldCallback(ModeCallback callback) override;
    void ClearAllCallbacks() override;

private:
    friend class InputCollectorImpl;

    ModeReactorImpl(InputCollectorImpl* const collector, unsigned char modalLevel);
    ~ModeReactorImpl() override;

    ModeCallback releaseCallback;
    ModeCallback holdCallback;
    ModeCallback pressCallback;
};

} // namespace Window
