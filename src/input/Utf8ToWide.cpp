// SPDX-License-Identifier: Zlib
#include "input/Utf8ToWide.h"

#include "platform/Platform.h"

#include <common/ApplicationErrorException.h>

namespace Window {

std::wstring Utf8ToWide(const std::string& source) {
    // SDL's texts are at most 32 bytes, far below the int range of the platform's interface.
    const int sourceLength = static_cast<int>(source.size());
    const int length = Platform::MultiByteToWide(source.data(), sourceLength, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    if (Platform::MultiByteToWide(source.data(), sourceLength, wide.data(), length) == 0)
        throw Common::ApplicationErrorException("Failed to decode UTF-8 string: " + source);
    return wide;
}

} // namespace Window
