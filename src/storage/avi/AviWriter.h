#pragma once

#include "platform/RawFile.h"
#include "storage/avi/AviFormat.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

/// Writes one AVI file: coded video, frame by frame, as it is.
///
/// Life: `openOutput` (placeholder header), `setVideo` (provisional header), frames, `close` (index and final
/// header). Every frame that was taken is in the system's hands when the call returns; a process that ends without
/// `close` leaves a file that `repairAvi` completes. Used by one thread at a time; only `lastError` is shared by all.
class AviWriter final {
public:
    /// Numbers that logs and callers know.
    enum class Error {
        None = 0,
        SizeLimit = 1, ///< the file would reach 4 GiB - 16 MiB - 2 KiB; the frame was not written
        Open = 2,
        Write = 4,
        Index = 5,    ///< the index could not be written at the end
        Header = 6,   ///< the header could not be written at the end
        ReadOnly = 7, ///< the file has been closed and takes nothing more
        OutOfMemory = 8
    };
    using Bytes = std::span<const std::byte>;

    /// Opens a file that is made when missing and is not cut when it is there, and writes the placeholder of its
    /// header. Null on a failure, which `lastError` names.
    static std::unique_ptr<AviWriter> openOutput(const std::filesystem::path& path);
    /// The last failure of any writer in this process; a success does not clear it.
    static Error lastError();

    /// Closes the file if nobody has.
    ~AviWriter();
    AviWriter(const AviWriter&) = delete;
    AviWriter& operator=(const AviWriter&) = delete;

    /// Size in pixels, frames a second, and the coding's four characters ("H264"). Returns 0, or -1 on a failure.
    int setVideo(std::uint32_t width, std::uint32_t height, double framesPerSecond, std::string_view compressor);
    /// Announces a sound track before the first chunk; returns its number, counted from 1, or -1 on a failure.
    int addAudioTrack(const corvanta::avi::AudioTrack& track);
    /// Appends one coded frame; returns 0, or -1 when it was not taken. The file stays as it was then.
    int writeFrame(Bytes frame, bool isKeyFrame);
    /// Appends sound of a track.
    int writeAudio(int track, Bytes sound);
    /// Writes index and header; returns 0, or -1 when one of them could not be written. Once.
    int close();

    double framesPerSecond() const { return header_.framesPerSecond; }
    std::uint32_t videoFrames() const { return header_.videoFrames; }
    std::uint32_t largestChunk() const { return largestChunk_; }
    /// Position and length of the last video chunk.
    std::uint32_t lastFramePosition() const { return lastFramePosition_; }
    std::uint32_t lastFrameLength() const { return lastFrameLength_; }
    /// Where the next chunk goes.
    std::uint32_t writePosition() const { return writePosition_; }

private:
    explicit AviWriter(std::unique_ptr<corvanta::platform::RawFile> file)
        : file_(std::move(file)) {}

    int writeChunk(const corvanta::avi::FourCharacters& chunk, std::uint32_t flags, Bytes data);
    bool writeHeader();
    static int fail(Error error);

    std::unique_ptr<corvanta::platform::RawFile> file_; ///< null: closed
    corvanta::avi::Header header_;
    std::vector<corvanta::avi::IndexEntry> index_;
    std::uint32_t writePosition_ = corvanta::avi::HeaderSize; ///< every byte before it has been taken by the system
    std::uint32_t largestChunk_ = 0;
    std::uint32_t lastFramePosition_ = 0;
    std::uint32_t lastFrameLength_ = 0;
};
