// SPDX-License-Identifier: Zlib
#pragma once

#include "reactors/ReactorID.h"

#include <window/Reactors.h>

namespace Window {

/// A cursor tracer: called for every mouse motion by priority, at every modal level, on the
/// thread that polls; remembers the last position delivered to it.
class CursorTracerImpl : public ICursorTracer, public ReactorID {
public:
    void SetCallback(CursorCallback callback) override;
    void ClearAllCallbacks() override;
    Zenk::two_dimensional_coordinate<short> GetPosition() override;

private:
    friend class InputCollectorImpl;

    CursorTracerImpl(InputCollectorImpl* const collector, unsigned char modalLevel);
    ~CursorTracerImpl() override;

    Zenk::two_dimensional_coordinate<short> position;
    CursorCallback callback;
};

} // namespace Window
