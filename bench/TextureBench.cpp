// SPDX-License-Identifier: MIT
// What happens to pixels on their way from a file to GL.
#include <bench/RatioTable.h>

#include <VX_OpenGL64/textures/files/VX_GLDDSTextureLoader2D.h>
#include <VX_OpenGL64/textures/files/private/PixelRows.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/TemporaryFile.h>

#include <epoxy/gl.h>

#include <cstdio>
#include <cstring>
#include <vector>

namespace {

using vx::bench::Work;

constexpr std::size_t Pixels = 4096 * 3072;

std::vector<unsigned char> noise(std::size_t count) {
    std::vector<unsigned char> bytes(count);
    std::uint32_t state = 1;
    for (unsigned char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<unsigned char>(state >> 24);
    }
    return bytes;
}

/// Copies as many bytes as the conversion reads and writes, half of them each.
Work copying(std::size_t readAndWritten) {
    return [readAndWritten](benchmark::State& state) {
        const auto from = noise(readAndWritten / 2);
        std::vector<unsigned char> to(from.size());
        for (auto _ : state) {
            std::memcpy(to.data(), from.data(), from.size());
            benchmark::ClobberMemory();
        }
    };
}

using Conversion = void (*)(const unsigned char* in, unsigned char* out, std::size_t pixels);

Work converting(Conversion convert, std::size_t inBytes, std::size_t outBytes) {
    return [=](benchmark::State& state) {
        const auto from = noise(Pixels * inBytes);
        std::vector<unsigned char> to(Pixels * outBytes);
        for (auto _ : state) {
            convert(from.data(), to.data(), Pixels);
            benchmark::ClobberMemory();
        }
    };
}

void undoing(benchmark::State& state) {
    const auto straight = noise(Pixels * 4);
    std::vector<unsigned char> pixels(straight.size());
    vx::pixels::premultiplyRGBA(straight.data(), pixels.data(), Pixels);
    for (auto _ : state) {
        vx::pixels::undoPremultiplication(pixels.data(), Pixels);
        benchmark::ClobberMemory();
    }
}

bool addConversion(const char* name, Work ours, std::size_t readAndWritten) {
    return vx::bench::addRow({.name = name,
                              .limit = copying(Pixels * readAndWritten),
                              .ours = std::move(ours),
                              .must = 3,
                              .aim = 1.5});
}

constexpr int DDSSide = 1024, DDSLevels = 11;

std::string ddsBytes() {
    std::string bytes(128, 0);
    bytes.replace(0, 4, "DDS ").replace(84, 4, "DXT5");
    bytes[13] = bytes[17] = DDSSide >> 8;
    bytes[28] = DDSLevels;
    const auto blocks = noise(DDSSide * DDSSide * 4 / 3 + 64);
    return bytes.append(blocks.begin(), blocks.end());
}

void loadDDS(benchmark::State& state) {
    const vx::test::HeadlessContext context(64, 64);
    const vx::test::TemporaryFile file(ddsBytes());
    for (auto _ : state) {
        VX_GLDDSTextureLoader2D loader;
        const GLuint name = loader.Load(file.path());
        glDeleteTextures(1, &name);
        glFinish();
        if (!name)
            return state.SkipWithError("it did not load");
    }
}

// The same levels from a file's bytes in a buffer that is kept.
void loadDDSRaw(benchmark::State& state) {
    const vx::test::HeadlessContext context(64, 64);
    const std::string bytes = ddsBytes();
    const vx::test::TemporaryFile file(bytes);
    std::vector<unsigned char> data(bytes.size());
    for (auto _ : state) {
        std::FILE* stream = std::fopen(file.path(), "rb");
        const std::size_t count = std::fread(data.data(), 1, data.size(), stream);
        std::fclose(stream);
        GLuint name = 0;
        glGenTextures(1, &name);
        glBindTexture(GL_TEXTURE_2D, name);
        const unsigned char* level = data.data() + 128;
        for (int i = 0; i < DDSLevels; ++i) {
            const int side = DDSSide >> i, blocks = (side + 3) / 4, size = blocks * blocks * 16;
            glCompressedTexImage2D(GL_TEXTURE_2D, i, GL_COMPRESSED_RGBA_S3TC_DXT5_EXT, side, side, 0, size,
                                   level);
            level += size;
        }
        glDeleteTextures(1, &name);
        glFinish();
        if (count != data.size())
            return state.SkipWithError("it was not read");
    }
}

const bool registered = addConversion("premultiplied undone, 12 MP", undoing, 8) &&
                        addConversion("RGB565, 12 MP", converting(vx::pixels::toRGB565, 3, 2), 5) &&
                        addConversion("RGBA5551, 12 MP", converting(vx::pixels::toRGBA5551, 3, 2), 5) &&
                        addConversion("LA88, 12 MP", converting(vx::pixels::premultiplyLA, 2, 2), 4) &&
                        vx::bench::addRow({.name = "DDS, 1024 x 1024, 11 levels",
                                           .limit = loadDDSRaw,
                                           .ours = loadDDS,
                                           .must = 1.2,
                                           .aim = 1.0});

} // namespace
