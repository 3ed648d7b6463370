#include "reactors/CursorTracerImpl.h"

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

void CursorTracerImpl::SetCallback(CursorCallback callback) {
    this->callback = std::move(callback);
}

// The position is left alone: a cleared tracer goes on following the cursor.
void CursorTracerImpl::ClearAllCallbacks() {
    callback = NotConsumed;
}

Zenk::two_dimensional_coordinate<short> CursorTracerImpl::GetPosition() {
    return position;
}

} // namespace Window
