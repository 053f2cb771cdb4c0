#include "video/FrameMailbox.h"

#include <cstring>
#include <new>

namespace corvanta::video {

FrameMailbox::WriteResult FrameMailbox::write(const std::uint8_t* data, FrameSize size) {
    if (data == nullptr || !isUsable(size)) {
        return WriteResult::Refused;
    }
    if (writing_.test_and_set(std::memory_order_acquire)) {
        return WriteResult::Busy;
    }
    const bool prepared = prepareWriterBuffer(size);
    if (prepared) {
        std::memcpy(buffers_[writer_].bytes.get(), data, byteCount(size));
        writer_ = between_.exchange(writer_ | freshFlag, std::memory_order_acq_rel) & indexMask;
    }
    writing_.clear(std::memory_order_release);
    return prepared ? WriteResult::Written : WriteResult::NoMemory;
}

bool FrameMailbox::prepareWriterBuffer(FrameSize size) {
    Buffer& buffer = buffers_[writer_];
    if (buffer.size == size) {
        return true;
    }
    // The old block goes first: two large ones at once may be more than a 32-bit process has in one piece.
    buffer = {};
    buffer.bytes.reset(new (std::nothrow) std::uint8_t[byteCount(size)]);
    if (!buffer.bytes) {
        return false;
    }
    buffer.size = size;
    return true;
}

std::optional<FrameMailbox::Frame> FrameMailbox::take() {
    if ((between_.load(std::memory_order_relaxed) & freshFlag) == 0) {
        return std::nullopt;
    }
    reader_ = between_.exchange(reader_, std::memory_order_acq_rel) & indexMask;
    const Buffer& buffer = buffers_[reader_];
    return Frame{buffer.bytes.get(), buffer.size};
}

void FrameMailbox::release() {
    buffers_[reader_] = {};
    reader_ = between_.exchange(reader_, std::memory_order_acq_rel) & indexMask;
    buffers_[reader_] = {};
    if (!writing_.test_and_set(std::memory_order_acquire)) {
        buffers_[writer_] = {};
        writing_.clear(std::memory_order_release);
    }
}

} // namespace corvanta::video
