#pragma once

namespace Zenk {

/// A point on a plane, `x` then `y`; with `short` it is a cursor position in window pixels.
template <class T> struct two_dimensional_coordinate {
    T x{};
    T y{};

    friend bool operator==(const two_dimensional_coordinate& a,
                           const two_dimensional_coordinate& b) noexcept {
        return a.x == b.x && a.y == b.y;
    }
    friend bool operator!=(const two_dimensional_coordinate& a,
                           const two_dimensional_coordinate& b) noexcept {
        return !(a == b);
    }
};

} // namespace Zenk
