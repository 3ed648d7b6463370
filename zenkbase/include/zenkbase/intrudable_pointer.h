// SPDX-License-Identifier: Zlib
#pragma once

#include <zenkbase/intrudable.h>

#include <cstddef>
#include <type_traits>
#include <utility>

namespace Zenk {

/// A handle that owns one count of an `Intrudable` object; the object dies with its last handle.
///
/// Copying takes a count, moving leaves the source empty, and releasing the last count deletes
/// the object through its virtual destructor on the releasing thread. Handles to different
/// interfaces of one object share the object's single count. The count is atomic, so copies of a
/// handle may live on different threads; one handle is used by one thread at a time.
template <class T> class IntrudablePointer {
    static_assert(std::is_base_of_v<Detail::Intrudable, T>, "T must derive from Zenk::Intrudable");

public:
    /// An empty handle.
    IntrudablePointer() noexcept = default;
    /// An empty handle, from `nullptr`.
    IntrudablePointer(std::nullptr_t) noexcept {}

    /// Takes a count of `object`; a null pointer gives an empty handle.
    explicit IntrudablePointer(T* object) noexcept : object(object) { Acquire(); }

    /// Shares `other`'s object, taking a count of it.
    IntrudablePointer(const IntrudablePointer& other) noexcept : object(other.object) { Acquire(); }
    /// Takes over `other`'s count; `other` is left empty.
    IntrudablePointer(IntrudablePointer&& other) noexcept
        : object(std::exchange(other.object, nullptr)) {}

    /// Shares the object of a handle to a derived interface, taking a count of it.
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    IntrudablePointer(const IntrudablePointer<U>& other) noexcept : object(other.Get()) {
        Acquire();
    }

    /// Takes over the count of a handle to a derived interface, which is left empty.
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    IntrudablePointer(IntrudablePointer<U>&& other) noexcept : object(other.Detach()) {}

    /// Drops this handle's count; the last one deletes the object, on this thread.
    ~IntrudablePointer() { Release(); }

    /// Holds `other`'s object instead of its own, whose count it drops (deleting that object if
    /// it was the last). Takes `other` by value, so it serves as copy and as move assignment.
    IntrudablePointer& operator=(IntrudablePointer other) noexcept {
        std::swap(object, other.object);
        return *this;
    }

    /// Drops this handle's count (deleting the object if it was the last) and empties the handle.
    void Reset() noexcept { IntrudablePointer().swap(*this); }

    /// Exchanges the objects of two handles; no count changes.
    void swap(IntrudablePointer& other) noexcept { std::swap(object, other.object); }

    /// The object, or null for an empty handle; the handle keeps its count.
    T* Get() const noexcept { return object; }
    /// The object; the handle must not be empty.
    T* operator->() const noexcept { return object; }
    /// The object; the handle must not be empty.
    T& operator*() const noexcept { return *object; }
    /// Whether the handle holds an object.
    explicit operator bool() const noexcept { return object != nullptr; }

    /// Gives up ownership without releasing: the caller takes over the count.
    T* Detach() noexcept { return std::exchange(object, nullptr); }

    /// Whether both handles hold the same object, or both are empty.
    friend bool operator==(const IntrudablePointer& a, const IntrudablePointer& b) noexcept {
        return a.object == b.object;
    }
    /// Whether the handles hold different objects.
    friend bool operator!=(const IntrudablePointer& a, const IntrudablePointer& b) noexcept {
        return a.object != b.object;
    }

private:
    void Acquire() noexcept {
        if (object != nullptr)
            static_cast<Detail::Intrudable*>(object)->AddReference();
    }

    void Release() noexcept {
        if (object == nullptr)
            return;
        Detail::Intrudable* base = object;
        object = nullptr;
        if (base->DropReference())
            delete base;
    }

    T* object = nullptr;
};

} // namespace Zenk
