#pragma once

#include "sensor/Samples.h"

#include <QPointF>
#include <QVector>

namespace corvanta::sensor {

/// The line that a range of samples looks like, drawn `columns` pixels wide: points of (time in ms, value).
///
/// Of each column of pixels at most four samples are kept, in time's order: the first, the lowest, the highest and
/// the last. So the picture is that of all samples, however many there are. One sample before and one behind the
/// range are among the points, so that the line reaches the edges. Samples without communication are left out.
QVector<QPointF> thinned(const Samples& samples, double from, double to, int columns);

/// The lowest and the highest value of the samples in a range; `low` > `high` when it has none.
struct Extent {
    double low = 1;
    double high = 0;
    bool isEmpty() const { return low > high; }
    void add(double value);
};
Extent extentOf(const Samples& samples, double from, double to);

} // namespace corvanta::sensor
