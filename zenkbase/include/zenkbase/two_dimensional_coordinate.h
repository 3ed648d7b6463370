// SPDX-License-Identifier: Zlib
#pragma once

namespace Zenk {

/// A point on a plane, `x` then `y`; with `short` it is a cursor position in window pixels.
template <class T> struct two_dimensional_coordinate {
    T x{}; ///< Horizontal, growing to the right.
    T y{}; ///< Vertical; for window pixels, growing downwards.

    /// Whether both coordinates are equal. Pure.
    friend bool operator==(const two_dimensional_coordinate& a,
                           const two_dimensional_coordinate& b) noexcept {
        return a.x == b.x && a.y == b.y;
    }
    /// Whether either coordinate differs. Pure.
    friend bool operator!=(const two_dimensional_coordinate& a,
                           const two_dimensional_coordinate& b) noexcept {
        return !(a == b);
    }
};

} // namespace Zenk
