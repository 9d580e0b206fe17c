// SPDX-License-Identifier: MIT
// Reads any bytes as a DDS file, and each byte of the levels that are said to be in it.
#include <VX_OpenGL64/textures/files/private/DDSFile.h>
#include <tests/fuzz/MemoryFile.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static vx::fuzz::MemoryFile memory("dds");
    vx::DDSFile file;
    std::string why;
    const bool success = vx::readDDSFile(memory.fill(data, size), file, why);
    vx::fuzz::expect(success == why.empty());
    if (!success)
        return 0;
    vx::fuzz::expect(file.dataSize == size - 128);
    std::size_t end = 0;
    unsigned sum = 0;
    for (const vx::DDSLevel& level :
         vx::levelsOfDDS(file.width, file.height, file.mipMapCount, file.format, file.dataSize)) {
        vx::fuzz::expect(level.offset == end);
        end += level.size;
        for (std::size_t i = level.offset; i < end; ++i)
            sum += file.data[i];
    }
    vx::fuzz::expect(end <= file.dataSize && sum <= 255 * end);
    return 0;
}
