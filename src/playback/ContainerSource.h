#pragma once

#include "playback/PacketSource.h"

#include <filesystem>

namespace corvanta::playback {

/// A finished file, read by FFmpeg's demultiplexer. Where the container has a table of all frames (AVI, MP4) that is
/// taken; other files are read through once when they are opened.
class ContainerSource final : public PacketSource {
public:
    /// `Unfinished` for a container whose table of frames is missing.
    OpenError open(const std::filesystem::path& file);

    bool read(std::size_t entry, AVPacket& packet) override;

private:
    OpenError openInput(const std::filesystem::path& file);
    void takeTable();
    void scan();
    bool seek(std::size_t entry);
    std::optional<std::size_t> readNext(AVPacket& packet);
    std::optional<std::size_t> entryOf(const AVPacket& packet) const;

    InputContext input_;
    AVStream* video_ = nullptr; ///< of `input_`
    bool hasTable_ = false;
    std::optional<std::size_t> next_; ///< the entry that the next packet is, when that is known
};

} // namespace corvanta::playback
