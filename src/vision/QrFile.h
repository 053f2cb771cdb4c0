#pragma once

#include "vision/FileMeasurement.h"
#include "vision/QrPose.h"

namespace corvanta::vision {

/// The position that a file shows: that of a picture's code, or of a video the trimmed mean of the positions of all
/// its frames that show one. None where nothing is found, the file cannot be read, or it is neither by its name. The
/// frames of a video are spread over at most `threads` cores (0: all), which changes nothing of the result.
/// `interrupted` is asked between frames, on several threads; an interrupted measurement has no result. Any thread.
std::optional<Position> measureFile(const QString& path, const QrPose& pose,
                                    const std::function<bool()>& interrupted = {}, int threads = 0);

/// The same for a thread of its own: the position's three texts. What `setup` says is looked at when it measures.
FileMeasurement qrMeasurement(const QrSetup& setup);

} // namespace corvanta::vision
