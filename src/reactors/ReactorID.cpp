// SPDX-License-Identifier: Zlib
#include "reactors/ReactorID.h"

#include "input/InputCollectorImpl.h"

#include <common/SRuntimeUniqueId.h>
#include <zenkbase/singleton.h>

namespace Window {
namespace {

long long NextId() {
    Zenk::Singleton<Common::Unique::SRuntimeUniqueId, std::shared_ptr> ids(1);
    return ids.Instance()->NextId();
}

} // namespace

ReactorID::ReactorID(InputCollectorImpl* collector, unsigned char modalLevel)
    : modalLevel(modalLevel)
    , id(NextId())
    , collector(collector) {}

ReactorID::~ReactorID() {
    // Removal starts one task per registry. If a task cannot be started (no thread or no memory
    // for its shared state), the tasks that did start have finished by the time the exception
    // arrives here; the reactor's memory is about to go, so its entries are then removed on this
    // thread, one registry after the other, by the same searches, which cannot fail.
    try {
        collector->RemoveReactor(id);
    } catch (...) {
        collector->RemoveReactorInPlace(id);
    }
}

} // namespace Window
