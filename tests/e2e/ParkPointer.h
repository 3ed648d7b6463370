// SPDX-License-Identifier: Zlib
#pragma once

#include <string>

/// Puts the pointer at screen position `x`, `y`, with no button held, as every program of the
/// display sees it; or says in `problem` why it could not.
bool ParkPointer(int x, int y, std::string& problem);
