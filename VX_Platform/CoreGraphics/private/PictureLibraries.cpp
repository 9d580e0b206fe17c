// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureLibraries.h>

#include <cstdio>

#include <gif_lib.h>
#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>
#include <webp/decode.h>

namespace {

std::string numbers(int major, int minor, int release) {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(release);
}

// "4.5.0" of "LIBTIFF, Version 4.5.0" and a line about its authors.
std::string versionOfTIFF() {
    const std::string text = TIFFGetVersion();
    const std::string word = "Version ";
    const std::size_t at = text.find(word);
    if (at == std::string::npos)
        return {};
    const std::size_t begin = at + word.size();
    return text.substr(begin, text.find('\n') - begin);
}

} // namespace

VX_Library vx::libraryOfPNG(const char* kind) {
    return {kind, "libpng", png_get_libpng_ver(nullptr)};
}

// It does not tell at run time; one without that name says which interface it has.
VX_Library vx::libraryOfJPEG(const char* kind) {
#ifdef LIBJPEG_TURBO_VERSION_NUMBER
    const int version = LIBJPEG_TURBO_VERSION_NUMBER;
    return {kind, "libjpeg-turbo", numbers(version / 1000000, version / 1000 % 1000, version % 1000)};
#else
    return {kind, "libjpeg", std::to_string(JPEG_LIB_VERSION)};
#endif
}

VX_Library vx::libraryOfTIFF(const char* kind) {
    return {kind, "libtiff", versionOfTIFF()};
}

VX_Library vx::libraryOfWebP(const char* kind) {
    const int version = WebPGetDecoderVersion();
    return {kind, "libwebp", numbers(version >> 16, version >> 8 & 255, version & 255)};
}

VX_Library vx::libraryOfGIF(const char* kind) {
    return {kind, "giflib", numbers(GIFLIB_MAJOR, GIFLIB_MINOR, GIFLIB_RELEASE)};
}

VX_Library vx::libraryOfSTB(const char* kind) {
    return {kind, "stb_image", {}};
}

VX_Library vx::noLibrary(const char* kind) {
    return {kind, {}, {}};
}
