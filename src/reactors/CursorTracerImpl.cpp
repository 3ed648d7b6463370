// SPDX-License-Identifier: Zlib
#include "reactors/CursorTracerImpl.h"

#include "reactors/LentCallback.h"

namespace Window {
namespace {

bool NotConsumed(Zenk::two_dimensional_coordinate<short>, const std::set<Mode>&) {
    return false;
}

} // namespace

CursorTracerImpl::CursorTracerImpl(InputCollectorImpl* const collector, unsigned char modalLevel)
    : ReactorID(collector, modalLevel)
    , position{0, 0}
    , callback(NotConsumed) {}

// A running callback of this reactor keeps its function until its call returns.
CursorTracerImpl::~CursorTracerImpl() {
    DisownCallback(callback);
}

void CursorTracerImpl::SetCallback(CursorCallback callback) {
    StoreCallback(this->callback, std::move(callback));
}

// The position is left alone: a cleared tracer goes on following the cursor.
void CursorTracerImpl::ClearAllCallbacks() {
    StoreCallback<CursorCallback>(callback, NotConsumed);
}

Zenk::two_dimensional_coordinate<short> CursorTracerImpl::GetPosition() {
    return position;
}

} // namespace Window
