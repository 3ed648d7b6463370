// SPDX-License-Identifier: Zlib
#pragma once

#include <zenkbase/singleton.h>

namespace Fakes {

/// Registers a service for the life of a scope, so that a failing test never leaves one behind.
template <class Interface> class ScopedInstance {
public:
    explicit ScopedInstance(Interface& instance) { Zenk::RegisterInstance<Interface>(instance); }
    ~ScopedInstance() { Zenk::UnregisterInstance<Interface>(); }
    ScopedInstance(const ScopedInstance&) = delete;
    ScopedInstance& operator=(const ScopedInstance&) = delete;
};

} // namespace Fakes
