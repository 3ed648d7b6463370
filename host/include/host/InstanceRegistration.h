// SPDX-License-Identifier: Zlib
#pragma once

#include <zenkbase/singleton.h>

namespace Host {

/// Stands an instance in the process-wide instance storage as the singleton of `Interface` for
/// the life of this object, and takes it out again when this object dies.
///
/// The registration does not own the instance: declare it after the instance it names, so that
/// it goes first. Construct and destroy it on the host's start-up thread while no module is
/// using the storage (the storage has no lock).
template <class Interface> class InstanceRegistration {
public:
    /// Registers `instance`. Throws `std::logic_error` when an instance of `Interface` is
    /// already registered; nothing is changed then.
    explicit InstanceRegistration(Interface& instance) : instance(&instance) {
        Zenk::RegisterInstance<Interface>(instance);
    }

    /// Takes the instance out, unless somebody already replaced it with another, which then
    /// stays.
    ~InstanceRegistration() { // NOLINT(bugprone-exception-escape)
        // Instance() cannot throw here: it runs only after Exists() found the instance, on the
        // one thread that may touch the storage.
        const Zenk::Singleton<Interface> view;
        if (view.Exists() && view.Instance() == instance)
            Zenk::UnregisterInstance<Interface>();
    }

    InstanceRegistration(const InstanceRegistration&) = delete;
    InstanceRegistration& operator=(const InstanceRegistration&) = delete;

private:
    Interface* instance;
};

} // namespace Host
