#include "PngFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <unistd.h>

namespace InputLab {
namespace {

class PngFileTest : public testing::Test {
protected:
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("inputlab_png_" + std::to_string(::getpid()));
    std::filesystem::path Path(const char* name) {
        std::filesystem::create_directories(folder);
        return folder / name;
    }
};

TEST_F(PngFileTest, PixelsSurviveTheRoundTrip) {
    RgbImage image;
    image.width = 3;
    image.height = 2;
    image.pixels = {1, 2, 3, 250, 251, 252, 0, 0, 0, 9, 8, 7, 255, 0, 128, 40, 50, 60};
    WritePng(Path("round.png"), image);
    const RgbImage back = ReadPng(Path("round.png"));
    EXPECT_EQ(back.width, 3U);
    EXPECT_EQ(back.height, 2U);
    EXPECT_EQ(back.pixels, image.pixels);
}

TEST_F(PngFileTest, WrongSizeIsRefusedAndWritesNothing) {
    RgbImage image;
    image.width = 2;
    image.height = 2;
    image.pixels.resize(5);
    EXPECT_THROW(WritePng(Path("bad.png"), image), std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(Path("bad.png")));
}

TEST_F(PngFileTest, NotAPngNamesTheFile) {
    std::ofstream(Path("text.png")) << "not a picture";
    try {
        ReadPng(Path("text.png"));
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what())
                      .find("Cannot read PNG file \"" + Path("text.png").string() + "\""),
                  std::string::npos)
            << error.what();
    }
}

TEST_F(PngFileTest, UnwritablePlaceNamesTheFile) {
    RgbImage image;
    image.width = 1;
    image.height = 1;
    image.pixels = {1, 2, 3};
    try {
        WritePng("/nonexistent/folder/x.png", image);
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("Cannot write PNG file \"/nonexistent"),
                  std::string::npos)
            << error.what();
    }
}

} // namespace
} // namespace InputLab
