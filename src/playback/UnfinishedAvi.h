#pragma once

#include "playback/PacketSource.h"

#include <array>
#include <filesystem>
#include <fstream>

namespace corvanta::playback {

/// An AVI file that is just being written, was left by a crash or was cut off: without its index, perhaps without its
/// header. Its frames are found by walking from chunk to chunk; where something else lies between, the next chunk is
/// looked for. H.264 as a stream of start codes, and Motion JPEG.
class UnfinishedAvi final : public PacketSource {
public:
    /// Whether it is such a file and has at least one frame that can be decoded.
    bool open(const std::filesystem::path& file);

    bool read(std::size_t entry, AVPacket& packet) override;

private:
    struct Chunk {
        std::array<char, 4> code{};
        std::uint32_t size = 0;
    };
    bool readAt(std::int64_t position, void* to, std::size_t count);
    std::optional<Chunk> chunkAt(std::int64_t position);
    std::optional<std::int64_t> readHeader();
    void readHeaderList(std::int64_t position, std::int64_t end);
    void walk(std::int64_t position);
    void readSize();
    std::optional<std::int64_t> findChunk(std::int64_t position);
    bool isKeyFrame(std::int64_t position, std::uint32_t size);

    std::ifstream file_;
    std::int64_t fileSize_ = 0;
    std::array<char, 2> number_{'0', '0'}; ///< of the video stream, the first two characters of its chunks' codes
    AVCodecID codec_ = AV_CODEC_ID_H264;
};

} // namespace corvanta::playback
