#pragma once

#include "video/FrameSize.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

namespace corvanta::video {

/// A tile's buffer: hands the newest decoded picture from an SDK thread to the GUI thread without a lock. A picture
/// that is not taken before the next one comes is overwritten, which is what a live view wants.
///
/// Whoever works with the buffer has it for himself: he takes its address out of one atomic and puts it back when he
/// is done. A writer that finds it taken fills a second buffer instead of waiting; from then on the newer one is the
/// buffer, and the other is kept for the next such moment. A reader that finds it taken comes again, for the writer
/// is just bringing something newer. A buffer is re-allocated only when a picture of another size comes into it, and
/// freed only by who has it.
class FrameBuffer final {
    struct Block {
        FrameSize size;
        bool fresh = false;                    ///< not taken yet
        std::unique_ptr<std::uint8_t[]> bytes; ///< byteCount(size) bytes, or null with a default size
    };

public:
    enum class WriteResult {
        Written,
        Overwritten, ///< written, and the picture before it was never taken
        Refused,     ///< no data, or a size that is not usable
        NoMemory     ///< no buffer of this size could be had; the picture is dropped
    };

    /// The picture taken: byteCount(size()) bytes. Has the buffer until it is destroyed, on the reader's thread.
    class Picture final {
    public:
        Picture(FrameBuffer& buffer, std::unique_ptr<Block> block);
        ~Picture();
        Picture(Picture&& other) noexcept = default;
        Picture& operator=(Picture&&) = delete;

        std::uint8_t* data() const { return block_->bytes.get(); }
        FrameSize size() const { return block_->size; }

    private:
        FrameBuffer& buffer_;
        std::unique_ptr<Block> block_; ///< null when moved from
    };

    FrameBuffer() = default;
    ~FrameBuffer();
    FrameBuffer(const FrameBuffer&) = delete;
    FrameBuffer& operator=(const FrameBuffer&) = delete;

    /// Copies a picture in. Any thread, also several at once.
    WriteResult write(const std::uint8_t* data, FrameSize size);

    /// The newest picture if it was not taken yet. Nothing, too, while a newer one is just being written. Reader's
    /// thread; one picture at a time.
    std::optional<Picture> take();

    /// Drops a picture not yet taken and frees what nobody is just working with. Reader's thread.
    void release();

private:
    std::unique_ptr<Block> takeBlock(std::atomic<Block*>& place);
    void keepAsSpare(std::unique_ptr<Block> block);
    void putBack(std::unique_ptr<Block> block);
    static bool fit(Block& block, FrameSize size);

    std::atomic<Block*> block_{nullptr}; ///< the buffer, null while somebody has it and before the first picture
    std::atomic<Block*> spare_{nullptr}; ///< the second one, if there ever had to be one
    std::atomic<bool> written_{false};   ///< something was written since the last look; spares the reader the taking
};

} // namespace corvanta::video
