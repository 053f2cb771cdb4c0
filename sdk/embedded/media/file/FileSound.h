#pragma once

#include "media/StreamReader.h"
#include "media/sound/SoundDecoder.h"

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

namespace ipncsdk::media {

/// The sound of a recorded file on its way from the file to its time: stands by in packets, as the file brings it
/// before or behind its pictures, and is decoded when it is due. Used on one thread.
class FileSound final {
public:
    using microseconds = std::chrono::microseconds;

    FileSound() = default;
    FileSound(const FileSound&) = delete;
    FileSound& operator=(const FileSound&) = delete;

    /// A file begins, whose first unit is due at `begin`: what of the file before reaches beyond that is left out.
    /// `parameters` are null when the new one has no sound.
    void begin(const AVCodecParameters* parameters, microseconds begin);
    /// Takes the next packet; `due` is on the scale of the file's clock. Containers stamp only the first of several
    /// packets that stand together: one without a time belongs to the one before.
    void add(const AVPacket& packet, std::optional<microseconds> due);
    /// Forgets everything that waits, for nobody listens.
    void forget();

    /// When the first packet that waits is due.
    [[nodiscard]] std::optional<microseconds> due() const;
    /// Decodes the first packet that waits and hands it to the host, unless it is `late`.
    void deliver(ReaderHost& host, bool late);

private:
    struct Waiting {
        std::shared_ptr<SoundDecoder> decoder; ///< of the file that the packet comes from
        Packet packet;
        microseconds due{0};
    };

    std::shared_ptr<SoundDecoder> decoder_; ///< of the file that is read; null when it has no sound
    std::optional<microseconds> last_;      ///< when the packet before is due, of this file
    std::deque<Waiting> waiting_;
};

} // namespace ipncsdk::media
