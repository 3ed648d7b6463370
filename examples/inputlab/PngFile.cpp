#include "PngFile.h"

#include <png.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace InputLab {

namespace {

// libpng's simplified interface reports failures in the image record instead of by longjmp, so
// no C++ frame is ever jumped over.
struct ImageRecord {
    png_image image;

    ImageRecord() {
        std::memset(&image, 0, sizeof(image));
        image.version = PNG_IMAGE_VERSION;
    }
    ~ImageRecord() { png_image_free(&image); }
    ImageRecord(const ImageRecord&) = delete;
    ImageRecord& operator=(const ImageRecord&) = delete;
};

} // namespace

void WritePng(const std::filesystem::path& path, const RgbImage& image) {
    const auto fail = [&path](const std::string& reason) {
        return std::runtime_error("Cannot write PNG file \"" + path.string() + "\": " + reason);
    };
    if (image.width == 0 || image.height == 0)
        throw fail("the image is empty");
    if (image.pixels.size() != std::size_t{image.width} * image.height * 3)
        throw fail("the pixel data does not match the size");
    ImageRecord record;
    record.image.width = image.width;
    record.image.height = image.height;
    record.image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&record.image, path.c_str(), 0, image.pixels.data(), 0, nullptr) ==
        0)
        throw fail(record.image.message);
}

RgbImage ReadPng(const std::filesystem::path& path) {
    const auto fail = [&path](const std::string& reason) {
        return std::runtime_error("Cannot read PNG file \"" + path.string() + "\": " + reason);
    };
    ImageRecord record;
    if (png_image_begin_read_from_file(&record.image, path.c_str()) == 0)
        throw fail(record.image.message);
    record.image.format = PNG_FORMAT_RGB;
    RgbImage image;
    image.width = record.image.width;
    image.height = record.image.height;
    image.pixels.resize(PNG_IMAGE_SIZE(record.image));
    if (png_image_finish_read(&record.image, nullptr, image.pixels.data(), 0, nullptr) == 0)
        throw fail(record.image.message);
    return image;
}

} // namespace InputLab
