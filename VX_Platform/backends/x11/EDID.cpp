// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/EDID.h>

#include <algorithm>
#include <cstddef>

namespace vx {

namespace {

constexpr unsigned char kMagic[] = {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
constexpr std::size_t kBlockSize = 128;
constexpr std::size_t kFirstDescriptor = 54;
constexpr std::size_t kDescriptorSize = 18;
constexpr std::size_t kDescriptors = 4;
constexpr unsigned char kNameTag[] = {0, 0, 0, 0xFC, 0};
constexpr unsigned char kEndOfText = 0x0A;

// Cables, switches and makers leave anything there.
std::string textIn(std::span<const unsigned char> bytes) {
    std::string text(bytes.begin(), std::ranges::find(bytes, kEndOfText));
    text.erase(text.find_last_not_of(' ') + 1);
    const bool printable = std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
    return printable ? text : std::string();
}

} // namespace

std::string nameInEDID(std::span<const unsigned char> edid) {
    if (edid.size() < kBlockSize || !std::ranges::equal(edid.first(sizeof kMagic), kMagic))
        return {};
    for (std::size_t i = 0; i < kDescriptors; ++i) {
        const auto descriptor = edid.subspan(kFirstDescriptor + i * kDescriptorSize, kDescriptorSize);
        if (std::ranges::equal(descriptor.first(sizeof kNameTag), kNameTag))
            return textIn(descriptor.subspan(sizeof kNameTag));
    }
    return {};
}

} // namespace vx
