// SPDX-License-Identifier: Zlib
#include "PngFile.h"

#include <png.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>

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

// The file opened by its own name: on Windows a path is wide, and a narrow name would go through
// the ANSI code page, which cannot name every file; libpng then reads and writes the stream.
struct OpenFile {
    std::FILE* file = nullptr;
    std::string reason; // why it did not open

    OpenFile(const std::filesystem::path& path, bool writing) {
#if defined(_WIN32)
        file = _wfopen(path.c_str(), writing ? L"wb" : L"rb");
#else
        file = std::fopen(path.c_str(), writing ? "wb" : "rb");
#endif
        if (file == nullptr)
            reason = std::generic_category().message(errno);
    }
    ~OpenFile() {
        if (file != nullptr)
            std::fclose(file);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
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
    std::string failure;
    {
        OpenFile out(path, true);
        if (out.file == nullptr)
            throw fail(out.reason);
        if (png_image_write_to_stdio(&record.image, out.file, 0, image.pixels.data(), 0, nullptr) ==
            0)
            failure = record.image.message;
        else if (std::fflush(out.file) != 0)
            failure = std::generic_category().message(errno);
    }
    if (!failure.empty()) {
        // No half-written picture is left behind for a reader to take as the frame.
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
        throw fail(failure);
    }
}

RgbImage ReadPng(const std::filesystem::path& path) {
    const auto fail = [&path](const std::string& reason) {
        return std::runtime_error("Cannot read PNG file \"" + path.string() + "\": " + reason);
    };
    OpenFile in(path, false);
    if (in.file == nullptr)
        throw fail(in.reason);
    ImageRecord record;
    if (png_image_begin_read_from_stdio(&record.image, in.file) == 0)
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
