// SPDX-License-Identifier: Zlib
#pragma once

#include <zenkbase/export.h>
#include <zenkbase/missing_instance.h>

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>

/// The engine's in-house base, shared by every module: the process-wide instance storage through
/// which modules find the host's services, and the intrusive reference count of its interfaces.
namespace Zenk {

template <class T, template <class...> class Holder> class Singleton;
template <class T> void RegisterInstance(T& instance);
template <class T> T* UnregisterInstance() noexcept;

namespace Detail {

/// The one process-wide instance storage, shared by every module through zenkbase.
///
/// Keyed by the hash of the `Singleton<T, ...>` class's type, so each module finds the same
/// entry for the same service type. It has no lock: hosts register their services before the
/// modules start and take them out after the modules stopped, all on one thread.
class Storage {
    using Map = std::map<unsigned long long, void*>;

    ZENK_API static Map& GetStorageImpl();

    template <class T, template <class...> class Holder> friend class Zenk::Singleton;
    template <class T> friend void Zenk::RegisterInstance(T& instance);
    template <class T> friend T* Zenk::UnregisterInstance() noexcept;
};

/// Common polymorphic base of every `Singleton`, defined once in zenkbase so that all modules
/// agree on the base of the objects through which they reach the storage.
class ZENK_API TypeidCreationEnforcer {
public:
    TypeidCreationEnforcer();
    virtual ~TypeidCreationEnforcer();
};

} // namespace Detail

/// A view of the instance of `T` in the process-wide storage.
///
/// A module opens one on the stack when it needs a service and closes it straight away; nothing
/// is cached, so a service that the host replaces is seen at the next use. A `borrowed` view
/// (the usual kind) never changes the storage. An owning view (`borrowed` 0) takes the instance
/// out of the storage and deletes it when it closes.
template <class T, template <class...> class Holder = std::shared_ptr>
class Singleton : public Detail::TypeidCreationEnforcer {
public:
    /// Opens a view; `borrowed` 0 makes it owning. Changes nothing in the storage; never throws.
    explicit Singleton(std::int32_t borrowed = 1) noexcept : borrowed(borrowed) {}

    Singleton(const Singleton&) = delete;
    Singleton& operator=(const Singleton&) = delete;

    /// Closes the view. An owning one takes the instance out of the storage and deletes it, on
    /// this thread; a borrowed one does nothing.
    ~Singleton() override {
        if (borrowed != 0)
            return;
        auto& map = Detail::Storage::GetStorageImpl();
        const auto found = map.find(Key());
        if (found == map.end())
            return;
        T* owned = static_cast<T*>(found->second);
        map.erase(found);
        delete owned;
    }

    /// The registered instance of `T`; never null. Any thread that the host allows.
    /// Throws `Zenk::MissingInstance` when no instance of `T` is registered.
    T* Instance() const {
        const auto& map = Detail::Storage::GetStorageImpl();
        const auto found = map.find(Key());
        if (found == map.end())
            throw MissingInstance{};
        return static_cast<T*>(found->second);
    }

    /// Whether an instance of `T` is registered. Never throws.
    bool Exists() const noexcept {
        try {
            Instance();
            return true;
        } catch (const MissingInstance&) {
            return false;
        }
    }

    /// The storage key of `T`: the hash of this class's type, the same in every module.
    static unsigned long long Key() noexcept { return typeid(Singleton).hash_code(); }

    std::int32_t borrowed; ///< 0 for an owning view, anything else for a borrowed one.
};

/// Puts `instance` into the storage as the singleton of `T`; the host keeps ownership.
///
/// Call it on the host's start-up thread before any module needs `T`, and pair it with
/// `UnregisterInstance<T>()` before `instance` dies. Throws `std::logic_error` when an instance
/// of `T` is already registered: replacing one silently would leave modules talking to two.
template <class T> void RegisterInstance(T& instance) {
    auto& map = Detail::Storage::GetStorageImpl();
    if (!map.emplace(Singleton<T>::Key(), static_cast<void*>(&instance)).second)
        throw std::logic_error(std::string("zenkbase: an instance of ") + typeid(T).name() +
                               " is already registered");
}

/// Takes the instance of `T` out of the storage and returns it (null if there was none).
/// Nothing is deleted: the host that registered the instance still owns it.
template <class T> T* UnregisterInstance() noexcept {
    auto& map = Detail::Storage::GetStorageImpl();
    const auto found = map.find(Singleton<T>::Key());
    if (found == map.end())
        return nullptr;
    T* instance = static_cast<T*>(found->second);
    map.erase(found);
    return instance;
}

} // namespace Zenk
