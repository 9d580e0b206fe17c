// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/private/FrameSink.h>

#include <VX_Platform/CoreGraphics/private/PNGFile.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace vx {

namespace {

class PictureSink : public FrameSink {
public:
    PictureSink(const std::string& directory, int width, int height)
        : m_Directory(directory),
          m_Width(width),
          m_Height(height),
          m_Pixels(std::size_t(width) * std::size_t(height) * 3) {}

    bool write(const std::uint8_t* pixels) override {
        for (std::size_t from = 0, to = 0; to < m_Pixels.size(); from += 4, to += 3) {
            m_Pixels[to] = pixels[from + 2];
            m_Pixels[to + 1] = pixels[from + 1];
            m_Pixels[to + 2] = pixels[from];
        }
        char name[32];
        std::snprintf(name, sizeof name, "/frame_%05llu.png", m_Count);
        // A full disk is told once, not with every frame.
        m_IsGood =
            m_IsGood && writePNGFile((m_Directory + name).c_str(), m_Width, m_Height, 3, m_Pixels.data());
        m_Count += m_IsGood;
        return m_IsGood;
    }
    bool finish() override { return m_IsGood; }

private:
    std::string m_Directory;
    int m_Width, m_Height;
    std::vector<std::uint8_t> m_Pixels;
    unsigned long long m_Count = 0;
    bool m_IsGood = true;
};

} // namespace

std::unique_ptr<FrameSink> makePictureSink(const std::string& directory, int width, int height) {
    std::error_code failure, none;
    std::filesystem::create_directories(directory, failure);
    if (!std::filesystem::is_directory(directory, none)) {
        NSLog("VX_GLFrameRecorder: no directory %s: %s", directory.c_str(), failure.message().c_str());
        return nullptr;
    }
    return std::make_unique<PictureSink>(directory, width, height);
}

} // namespace vx
