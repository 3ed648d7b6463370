// SPDX-License-Identifier: Zlib
#include <zenkbase/singleton.h>

namespace Zenk::Detail {

Storage::Map& Storage::GetStorageImpl() {
    // A function-local static: built on first use, so a module that registers a service while
    // it is being loaded never meets an unconstructed map.
    static Map storage;
    return storage;
}

TypeidCreationEnforcer::TypeidCreationEnforcer() = default;
TypeidCreationEnforcer::~TypeidCreationEnforcer() = default;

} // namespace Zenk::Detail
