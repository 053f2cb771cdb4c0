#pragma once

#include "media/Ffmpeg.h"
#include "media/PictureConverter.h"
#include "media/Stream.h"

namespace ipncsdk::media {

/// Decodes the access units of one stream. One object belongs to one thread.
class H264Decoder final {
public:
    H264Decoder();
    H264Decoder(const H264Decoder&) = delete;
    H264Decoder& operator=(const H264Decoder&) = delete;

    /// Gives the decoder the next unit; the first one should be a key frame. A damaged unit is counted and costs
    /// its picture alone.
    void feed(const CodedFrame& unit);

    /// Nothing more will be fed: pictures that were held back for their order come out.
    void finish();

    /// Takes the next picture that is ready; false when there is none. To be asked after each `feed` until false.
    bool take(Picture& picture);

    /// Pictures a second as the stream itself says, once a key frame has been fed; 0 when it does not.
    double frameRate() const;

    /// How many pictures may be held back for their order, as far as the stream has told.
    int reordering() const { return context_ == nullptr ? 0 : context_->has_b_frames; }

    /// Units and pictures that the decoder found damaged so far.
    unsigned damaged() const { return damaged_; }

private:
    CodecContext context_; ///< null when there is no decoder; then nothing ever comes out
    Packet packet_;
    Frame frame_;
    PictureConverter converter_;
    unsigned damaged_ = 0;
};

} // namespace ipncsdk::media
