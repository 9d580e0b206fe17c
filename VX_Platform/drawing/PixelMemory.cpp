// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/PixelMemory.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>

namespace vx {

namespace {

// A canvas and its read-back, of two sizes; and no more than a few large pictures' worth.
constexpr std::size_t kBlocks = 4;
constexpr std::size_t kLargestKept = std::size_t(32) << 20;

struct Block {
    unsigned char* bytes = nullptr;
    std::size_t room = 0;
};

/// The blocks that wait for their next use, the latest first. A plain array, for objects that end late.
struct Store {
    std::mutex lock;
    std::array<Block, kBlocks> blocks;

    Block take(std::size_t size) {
        const std::lock_guard guard(lock);
        for (Block& block : blocks)
            if (block.bytes && block.room >= size && block.room / 2 <= size)
                return std::exchange(block, {});
        return {};
    }
    /// Returns the block that has to go for it.
    Block keep(Block block) {
        const std::lock_guard guard(lock);
        for (Block& place : blocks)
            if (std::swap(place, block); !block.bytes)
                break;
        return block;
    }
};

Store& store() {
    static auto* const one = new Store;
    return *one;
}

} // namespace

PixelMemory::PixelMemory(std::size_t size) {
    if (size == 0)
        return;
    Block block = store().take(size);
    m_IsFresh = !block.bytes;
    if (m_IsFresh)
        block = {static_cast<unsigned char*>(std::calloc(1, size)), size};
    m_Bytes = block.bytes;
    m_Room = block.room;
    m_Size = m_Bytes ? size : 0;
}

PixelMemory::PixelMemory(PixelMemory&& other) noexcept {
    *this = std::move(other);
}

PixelMemory& PixelMemory::operator=(PixelMemory&& other) noexcept {
    std::swap(m_Bytes, other.m_Bytes);
    std::swap(m_Size, other.m_Size);
    std::swap(m_Room, other.m_Room);
    std::swap(m_IsFresh, other.m_IsFresh);
    return *this;
}

PixelMemory::~PixelMemory() {
    Block block = {m_Bytes, m_Room};
    if (m_Bytes && m_Room <= kLargestKept)
        block = store().keep(block);
    std::free(block.bytes);
}

void PixelMemory::clear() {
    if (m_Bytes && !m_IsFresh) // fresh memory is clear, and untouched
        std::memset(m_Bytes, 0, m_Size);
    m_IsFresh = false;
}

} // namespace vx
