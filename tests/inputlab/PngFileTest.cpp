// SPDX-License-Identifier: Zlib
// Screenshots: pixels survive the round trip, and failures name the file.
#include "PngFile.h"

#include "LabTest.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace InputLab {
namespace {

TEST(PngFileTest, PixelsSurviveTheRoundTripAndFailuresNameTheFile) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("inputlab_png_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    RgbImage image;
    image.width = 3;
    image.height = 2;
    image.pixels = {1, 2, 3, 250, 251, 252, 0, 0, 0, 9, 8, 7, 255, 0, 128, 40, 50, 60};
    WritePng(folder / "round.png", image);
    const RgbImage back = ReadPng(folder / "round.png");
    EXPECT_EQ(back.width, 3U);
    EXPECT_EQ(back.height, 2U);
    EXPECT_EQ(back.pixels, image.pixels);

    std::ofstream(folder / "text.png") << "not a picture";
    const std::string message =
        MessageOf<std::runtime_error>([&] { ReadPng(folder / "text.png"); });
    EXPECT_NE(message.find("Cannot read PNG file \"" + (folder / "text.png").string() + "\""),
              std::string::npos)
        << message;
    image.pixels.resize(5); // wrong size: refused, and no file is left behind
    EXPECT_THROW(WritePng(folder / "bad.png", image), std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.png"));
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace InputLab
