#pragma once

#include "video/FrameSize.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

namespace corvanta::video {

/// Hands the newest decoded picture from an SDK thread to the GUI thread without a lock. A picture that is not taken
/// before the next one comes is lost, which is what a live view wants.
///
/// Three buffers rotate: one belongs to the writer, one to the reader, and the index of the third one, with a flag
/// whether it holds a picture not yet taken, stands in one atomic that both exchange for their own. Each buffer is
/// re-allocated only when a picture of another size comes into it.
class FrameMailbox final {
public:
    enum class WriteResult {
        Written,
        Refused, ///< no data, or a size that is not usable
        Busy,    ///< another thread is writing at this moment; the picture is dropped
        NoMemory ///< no buffer of this size could be had; the picture is dropped
    };

    /// A picture in the reader's buffer: byteCount(size) bytes, valid until the next `take` or `release`.
    struct Frame {
        std::uint8_t* data = nullptr;
        FrameSize size;
    };

    FrameMailbox() = default;
    FrameMailbox(const FrameMailbox&) = delete;
    FrameMailbox& operator=(const FrameMailbox&) = delete;

    /// Copies a picture in. Any thread. A tile has one writer at a time; that two streams overlap for a moment is
    /// answered with Busy, never with waiting.
    WriteResult write(const std::uint8_t* data, FrameSize size);

    /// The newest picture not yet taken, or nothing. Reader's thread.
    std::optional<Frame> take();

    /// Drops a picture not yet taken and gives the buffers back, except the one that a writer is just filling.
    /// Reader's thread.
    void release();

private:
    struct Buffer {
        std::unique_ptr<std::uint8_t[]> bytes; ///< byteCount(size) bytes, or null with a default size
        FrameSize size;
    };

    /// Makes the writer's buffer fit; false when there is no memory for it.
    bool prepareWriterBuffer(FrameSize size);

    static constexpr unsigned indexMask = 3;
    static constexpr unsigned freshFlag = 4;

    std::array<Buffer, 3> buffers_;
    std::atomic<unsigned> between_{1}; ///< index of the buffer that is nobody's, and freshFlag
    std::atomic_flag writing_;         ///< set while somebody owns the writer's side
    unsigned writer_ = 0;              ///< guarded by writing_
    unsigned reader_ = 2;              ///< reader's thread only
};

} // namespace corvanta::video
