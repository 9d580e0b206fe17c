// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PNGFile.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <png.h>

bool vx::writePNGFile(const char* path, int width, int height, int channels, const std::uint8_t* pixels) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    // A frame is written between two others: speed counts more than the last few per cent of the size.
    image.flags = PNG_IMAGE_FLAG_FAST;
    const png_int_32 upwards = -width * channels;
    if (png_image_write_to_file(&image, path, 0, pixels, upwards, nullptr))
        return true;
    NSLog("%s cannot be written: %s", path, image.message);
    return false;
}
