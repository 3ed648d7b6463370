// SPDX-License-Identifier: Zlib
// Puts the pointer at a place of the screen, with no button held, before an end-to-end case
// starts its program:
//   park_pointer X Y

#include "ParkPointer.h"

#include <charconv>
#include <iostream>
#include <string_view>

namespace {

bool Coordinate(std::string_view text, int& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} && end == text.data() + text.size() && value >= 0;
}

} // namespace

int main(int argc, char* argv[]) {
    int x = 0, y = 0;
    if (argc != 3 || !Coordinate(argv[1], x) || !Coordinate(argv[2], y)) {
        std::cerr << "usage: park_pointer X Y (screen pixels)\n";
        return 2;
    }
    std::string problem;
    if (!ParkPointer(x, y, problem)) {
        std::cerr << "park_pointer: " << problem << '\n';
        return 1;
    }
    return 0;
}
