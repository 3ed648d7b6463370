// SPDX-License-Identifier: Zlib
#pragma once

namespace Window {

/// A window size in pixels, `width` then `height`. 0 x 0 stands for "minimised" in size
/// queries and for "no change" where a size is compared with the current one.
struct Resolution {
    unsigned short width = 0;  ///< Horizontal size.
    unsigned short height = 0; ///< Vertical size.

    /// Whether both sizes are equal. Pure.
    friend constexpr bool operator==(const Resolution& a, const Resolution& b) noexcept {
        return a.width == b.width && a.height == b.height;
    }
    /// Whether either size differs. Pure.
    friend constexpr bool operator!=(const Resolution& a, const Resolution& b) noexcept {
        return !(a == b);
    }
};

/// The smallest size a window may have; not configurable.
inline constexpr Resolution MinimumResolution{700, 700};

} // namespace Window
