// SPDX-License-Identifier: Zlib
#pragma once

#include <boost/shared_array.hpp>

namespace Window {

/// The Vulkan instance extensions that a window needs, as the platform names them.
///
/// `names` holds `count` pointers and is empty when `count` is 0. The array is shared by copies
/// of the record; the strings themselves belong to the platform layer and live as long as the
/// library is loaded, so they must not be freed.
struct InstanceExtensions {
    unsigned int count = 0;                 ///< How many names there are.
    boost::shared_array<const char*> names; ///< `count` names, such as "VK_KHR_surface".
};

} // namespace Window
