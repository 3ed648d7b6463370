// SPDX-License-Identifier: Zlib
// Reads a PNG file for the end-to-end test:
//   png_probe FILE          prints "WIDTH HEIGHT"
//   png_probe FILE X Y      prints "R G B" of the pixel at column X, row Y
//   png_probe FILE OTHER    prints how many pixels differ between two pictures of one size

#include "PngFile.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>

int main(int argc, char* argv[]) {
    if (argc < 2 || argc > 4) {
        std::cerr << "usage: png_probe FILE [X Y | OTHER]\n";
        return 2;
    }
    try {
        const InputLab::RgbImage image = InputLab::ReadPng(argv[1]);
        if (argc == 2) {
            std::cout << image.width << ' ' << image.height << '\n';
            return 0;
        }
        if (argc == 3) {
            const InputLab::RgbImage other = InputLab::ReadPng(argv[2]);
            if (other.width != image.width || other.height != image.height) {
                std::cerr << "png_probe: the pictures differ in size (" << image.width << 'x'
                          << image.height << ", " << other.width << 'x' << other.height << ")\n";
                return 1;
            }
            std::size_t differing = 0;
            for (std::size_t at = 0; at < image.pixels.size(); at += 3)
                differing +=
                    !std::equal(&image.pixels[at], &image.pixels[at] + 3, &other.pixels[at]);
            std::cout << differing << '\n';
            return 0;
        }
        const unsigned long x = std::stoul(argv[2]);
        const unsigned long y = std::stoul(argv[3]);
        if (x >= image.width || y >= image.height) {
            std::cerr << "png_probe: " << x << ',' << y << " lies outside the " << image.width
                      << 'x' << image.height << " image\n";
            return 1;
        }
        const std::size_t at = (y * image.width + x) * 3;
        std::cout << int{image.pixels[at]} << ' ' << int{image.pixels[at + 1]} << ' '
                  << int{image.pixels[at + 2]} << '\n';
    } catch (const std::exception& error) {
        std::cerr << "png_probe: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
