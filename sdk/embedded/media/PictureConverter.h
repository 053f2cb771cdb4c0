#pragma once

#include "media/Ffmpeg.h"
#include "media/Picture.h"

namespace ipncsdk::media {

/// Turns whatever a decoder gives into packed full-range I420. One object belongs to one thread.
class PictureConverter final {
public:
    /// Fills `picture` with the frame's samples; an odd width or height loses its last column or row. Limited-range
    /// samples are stretched to full range. False for a frame below 2 x 2 pixels or of an unknown form.
    bool convert(const AVFrame& frame, Picture& picture);

    /// Scales a picture; both sizes are even. False when that cannot be done.
    bool scale(const Picture& from, int width, int height, Picture& to);

private:
    struct ScalerSetup {
        int fromWidth = 0;
        int fromHeight = 0;
        AVPixelFormat format = AV_PIX_FMT_NONE;
        bool fullRange = false; ///< of the source
        int width = 0;
        int height = 0;
        friend bool operator==(const ScalerSetup&, const ScalerSetup&) = default;
    };

    bool convertByScaler(const AVFrame& frame, bool fullRange, Picture& picture);
    bool prepareScaler(const ScalerSetup& setup);

    ScalerSetup setup_; ///< of `scaler_`
    Scaler scaler_;
};

/// Stretches limited-range luma (16 to 235) to 0 to 255: (y - 16) * 255 / 219, rounded to within one level.
void stretchLuma(const std::uint8_t* from, std::uint8_t* to, int count);
/// Stretches limited-range chroma (16 to 240 round 128) to 0 to 255; 128 stays 128.
void stretchChroma(const std::uint8_t* from, std::uint8_t* to, int count);

} // namespace ipncsdk::media
