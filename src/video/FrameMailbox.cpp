#include "video/FrameMailbox.h"

#include <cstring>
#include <new>

namespace corvanta::video {

FrameMailbox::WriteResult FrameMailbox::write(const std::uint8_t* data, FrameSize size) {
    if (data == nullptr || !isUsable(size)) {
        return WriteResult::Refused;
    }
    if (m_writing.test_and_set(std::memory_order_acquire)) {
        return WriteResult::Busy;
    }
    const bool prepared = prepareWriterBuffer(size);
    if (prepared) {
        std::memcpy(m_buffers[m_writer].bytes.get(), data, byteCount(size));
        m_writer = m_between.exchange(m_writer | freshFlag, std::memory_order_acq_rel) & indexMask;
    }
    m_writing.clear(std::memory_order_release);
    return prepared ? WriteResult::Written : WriteResult::NoMemory;
}

bool FrameMailbox::prepareWriterBuffer(FrameSize size) {
    Buffer& buffer = m_buffers[m_writer];
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
    if ((m_between.load(std::memory_order_relaxed) & freshFlag) == 0) {
        return std::nullopt;
    }
    m_reader = m_between.exchange(m_reader, std::memory_order_acq_rel) & indexMask;
    const Buffer& buffer = m_buffers[m_reader];
    return Frame{buffer.bytes.get(), buffer.size};
}

void FrameMailbox::release() {
    m_buffers[m_reader] = {};
    m_reader = m_between.exchange(m_reader, std::memory_order_acq_rel) & indexMask;
    m_buffers[m_reader] = {};
    if (!m_writing.test_and_set(std::memory_order_acquire)) {
        m_buffers[m_writer] = {};
        m_writing.clear(std::memory_order_release);
    }
}

} // namespace corvanta::video
