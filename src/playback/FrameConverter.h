#pragma once

#include "playback/Ffmpeg.h"
#include "playback/Picture.h"

namespace corvanta::playback {

/// Turns what a decoder gives into pictures for the renderer. One object belongs to one thread.
class FrameConverter final {
public:
    /// The frame's picture; an odd width or height loses its last column or row. Limited-range samples are stretched
    /// to full range: luma (y - 16) * 255 / 219, chroma (c - 128) * 255 / 224 about 128. Null for a frame that is
    /// smaller than 2 x 2 pixels, larger than the renderer takes or of a form that the scaler does not know.
    SharedPicture convert(const AVFrame& frame);

private:
    struct Setup {
        int width = 0;
        int height = 0;
        AVPixelFormat format = AV_PIX_FMT_NONE;
        bool fullRange = false;
        friend bool operator==(const Setup&, const Setup&) = default;
    };
    bool scale(const AVFrame& frame, const Setup& setup, Picture& picture);
    bool prepare(const Setup& setup);

    Setup setup_; ///< of `scaler_`
    Scaler scaler_;
};

} // namespace corvanta::playback
