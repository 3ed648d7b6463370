// SPDX-License-Identifier: Zlib
#pragma once

#include <atomic>
#include <cstdint>

namespace Zenk {

template <class T> class IntrudablePointer;

namespace Detail {

/// The reference count that every interface of the engine carries inside the object.
///
/// It sits in a virtual base (`Zenk::Intrudable`), so an object that implements several
/// interfaces still has exactly one count. Only `IntrudablePointer` touches the count.
class Intrudable {
public:
    Intrudable() = default;
    Intrudable(const Intrudable&) = delete;
    Intrudable& operator=(const Intrudable&) = delete;

    virtual ~Intrudable() = default;

protected:
    /// Called after every release with the count that remains; empty unless a class wants to
    /// observe its own releases. Called on the releasing thread.
    virtual void ReleaseNotice(std::int32_t /*remaining*/) {}

private:
    template <class T> friend class Zenk::IntrudablePointer;

    void AddReference() noexcept { count.fetch_add(1, std::memory_order_relaxed); }

    /// Returns true when the caller held the last count and must delete the object.
    bool DropReference() noexcept {
        const std::int32_t remaining = count.fetch_sub(1, std::memory_order_acq_rel) - 1;
        ReleaseNotice(remaining);
        return remaining == 0;
    }

    std::atomic<std::int32_t> count{0};
};

} // namespace Detail

/// Base of every reference-counted interface; virtual so that the count is shared.
class Intrudable : public virtual Detail::Intrudable {};

} // namespace Zenk
