#pragma once

#include "vision/FileMeasurement.h"
#include "vision/LaserMeasure.h"

#include <QVariantMap>

namespace corvanta::vision {

/// The position of the spot that a file shows: that of a picture, or of a video the trimmed mean of all its frames
/// that show one. Nothing where none does, the file cannot be read, or it is neither by its name. The frames of a
/// video are spread over at most `threads` cores (0: all), which changes nothing of the result. `interrupted` is
/// asked between frames, on several threads; an interrupted measurement has no result. Any thread.
std::optional<LaserPosition> measureFile(const QString& path, const LaserMeter& meter,
                                         const std::function<bool()>& interrupted = {}, int threads = 0);

/// The same for a thread of its own: the position's two texts. `info` is what the device's record keeps (see
/// `LaserInfo`), `root` the data folder, from which the reference picture is read when it measures. A reference that
/// is named and cannot be read has no result: without it another light might be taken for the spot.
FileMeasurement laserMeasurement(const QVariantMap& info, const QString& root);

} // namespace corvanta::vision
