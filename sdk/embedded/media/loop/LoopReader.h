#pragma once

#include "media/StreamReader.h"
#include "media/loop/LoopCamera.h"
#include "media/loop/LoopLibrary.h"
#include "media/loop/LoopVoice.h"
#include "media/sound/Talk.h"

#include <memory>

namespace ipncsdk::media {

/// Serves a recorded loop in real time, over and over. While the camera looks elsewhere than the recording, its
/// pictures are painted and coded as they are needed; back at the home view the recording goes on at its next key
/// frame.
class LoopReader final : public StreamReader {
public:
    /// The library outlives the reader. What is said on `line` is heard in the loop's sound. Without `control` the
    /// camera never moves.
    LoopReader(LoopLibrary& library, LoopKey key, std::shared_ptr<const TalkLine> line,
               std::shared_ptr<const LoopControl> control = nullptr);
    StreamError run(ReaderHost& host) override;

private:
    /// How a run of frames ended.
    enum class End { Host, Failed, Lost };

    std::shared_ptr<const Gop> await(ReaderHost& host, const Loop& loop, std::size_t number) const;
    End serve(ReaderHost& host, LoopVoice& voice);
    End serveGroup(ReaderHost& host, const Gop& gop, int firstFrame, LoopVoice& voice);
    /// Hands out the frame of a number, recorded or painted; false when the encoder failed.
    bool show(ReaderHost& host, const CodedFrame& recorded, int frame, const View& view);
    /// False when the host ended the reader.
    bool waitUntilReachable(ReaderHost& host) const;
    LoopControl::State state() const { return control_ == nullptr ? LoopControl::State() : control_->now(); }

    LoopLibrary& library_;
    LoopKey key_; ///< its exhibit changes
    const std::shared_ptr<const TalkLine> line_;
    const std::shared_ptr<const LoopControl> control_;
    std::shared_ptr<Loop> loop_;         ///< of `key_`
    std::unique_ptr<LoopCamera> camera_; ///< while the camera looks elsewhere
    Clock::time_point due_;              ///< when the next frame is
    std::chrono::microseconds time_{0};  ///< presentation time of the next frame
    std::chrono::microseconds spread_{0};
};

} // namespace ipncsdk::media
