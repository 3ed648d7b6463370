// SPDX-License-Identifier: Zlib
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace InputLab {

/// An 8-bit RGB picture, rows top to bottom, no padding between rows.
struct RgbImage {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint8_t> pixels; // width * height * 3 bytes
};

/// Writes `image` as a PNG file through libpng, replacing the file.
/// Throws `std::runtime_error` ("Cannot write PNG file "<path>": <reason>").
void WritePng(const std::filesystem::path& path, const RgbImage& image);

/// Reads a PNG file of any colour type as 8-bit RGB (alpha is dropped, grey is spread).
/// Throws `std::runtime_error` ("Cannot read PNG file "<path>": <reason>").
RgbImage ReadPng(const std::filesystem::path& path);

} // namespace InputLab
