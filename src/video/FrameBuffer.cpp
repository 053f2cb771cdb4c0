#include "video/FrameBuffer.h"

#include <cstring>
#include <new>
#include <utility>

namespace corvanta::video {

FrameBuffer::Picture::Picture(FrameBuffer& buffer, std::unique_ptr<Block> block)
    : buffer_(buffer)
    , block_(std::move(block)) {}

FrameBuffer::Picture::~Picture() {
    if (block_ != nullptr) {
        buffer_.putBack(std::move(block_));
    }
}

FrameBuffer::~FrameBuffer() {
    release();
}

std::unique_ptr<FrameBuffer::Block> FrameBuffer::takeBlock(std::atomic<Block*>& place) {
    return std::unique_ptr<Block>(place.exchange(nullptr, std::memory_order_acq_rel));
}

void FrameBuffer::keepAsSpare(std::unique_ptr<Block> block) {
    block->fresh = false;
    const std::unique_ptr<Block> other(spare_.exchange(block.release(), std::memory_order_acq_rel));
}

/// What the reader had becomes the buffer again, unless a writer has brought a newer one.
void FrameBuffer::putBack(std::unique_ptr<Block> block) {
    Block* nobodys = nullptr;
    if (block_.compare_exchange_strong(nobodys, block.get(), std::memory_order_acq_rel)) {
        static_cast<void>(block.release());
    } else {
        keepAsSpare(std::move(block));
    }
}

bool FrameBuffer::fit(Block& block, FrameSize size) {
    if (block.size == size) {
        return true;
    }
    // The old block goes first: two large ones at once may be more than a 32-bit process has in one piece.
    block = {};
    block.bytes.reset(new (std::nothrow) std::uint8_t[byteCount(size)]);
    if (!block.bytes) {
        return false;
    }
    block.size = size;
    return true;
}

FrameBuffer::WriteResult FrameBuffer::write(const std::uint8_t* data, FrameSize size) {
    if (data == nullptr || !isUsable(size)) {
        return WriteResult::Refused;
    }
    std::unique_ptr<Block> block = takeBlock(block_);
    if (block == nullptr) {
        block = takeBlock(spare_);
    }
    if (block == nullptr) {
        block.reset(new (std::nothrow) Block);
    }
    if (block == nullptr) {
        return WriteResult::NoMemory;
    }
    bool overwritten = block->fresh;
    if (!fit(*block, size)) {
        return WriteResult::NoMemory;
    }
    std::memcpy(block->bytes.get(), data, byteCount(size));
    block->fresh = true;
    if (std::unique_ptr<Block> other{block_.exchange(block.release(), std::memory_order_acq_rel)}) {
        overwritten = overwritten || other->fresh;
        keepAsSpare(std::move(other));
    }
    written_.store(true, std::memory_order_release);
    return overwritten ? WriteResult::Overwritten : WriteResult::Written;
}

std::optional<FrameBuffer::Picture> FrameBuffer::take() {
    if (!written_.load(std::memory_order_relaxed) || !written_.exchange(false, std::memory_order_acq_rel)) {
        return std::nullopt;
    }
    // A writer that has the buffer now raises the flag again when it has put it back.
    std::unique_ptr<Block> block = takeBlock(block_);
    if (block == nullptr) {
        return std::nullopt;
    }
    if (!std::exchange(block->fresh, false)) {
        putBack(std::move(block));
        return std::nullopt;
    }
    return std::optional<Picture>(std::in_place, *this, std::move(block));
}

void FrameBuffer::release() {
    written_.store(false, std::memory_order_release);
    takeBlock(block_).reset();
    takeBlock(spare_).reset();
}

} // namespace corvanta::video
