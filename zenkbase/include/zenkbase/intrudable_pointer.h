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
/// interfaces of one object share the object's single count.
template <class T> class IntrudablePointer {
    static_assert(std::is_base_of_v<Detail::Intrudable, T>, "T must derive from Zenk::Intrudable");

public:
    IntrudablePointer() noexcept = default;
    IntrudablePointer(std::nullptr_t) noexcept {}

    /// Takes a count of `object`; a null pointer gives an empty handle.
    explicit IntrudablePointer(T* object) noexcept : object(object) { Acquire(); }

    IntrudablePointer(const IntrudablePointer& other) noexcept : object(other.object) { Acquire(); }
    IntrudablePointer(IntrudablePointer&& other) noexcept : object(std::exchange(other.object, nullptr)) {}

    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    IntrudablePointer(const IntrudablePointer<U>& other) noexcept : object(other.Get()) {
        Acquire();
    }

    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    IntrudablePointer(IntrudablePointer<U>&& other) noexcept : object(other.Detach()) {}

    ~IntrudablePointer() { Release(); }

    IntrudablePointer& operator=(IntrudablePointer other) noexcept {
        std::swap(object, other.object);
        return *this;
    }

    /// Drops this handle's count (deleting the object if it was the last) and empties the handle.
    void Reset() noexcept { IntrudablePointer().swap(*this); }

    void swap(IntrudablePointer& other) noexcept { std::swap(object, other.object); }

    T* Get() const noexcept { return object; }
    T* operator->() const noexcept { return object; }
    T& operator*() const noexcept { return *object; }
    explicit operator bool() const noexcept { return object != nullptr; }

    /// Gives up ownership without releasing: the caller takes over the count.
    T* Detach() noexcept { return std::exchange(object, nullptr); }

    friend bool operator==(const IntrudablePointer& a, const IntrudablePointer& b) noexcept {
        return a.object == b.object;
    }
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
