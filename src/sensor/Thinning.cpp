#include "sensor/Thinning.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta::sensor {
namespace {

constexpr double Milliseconds = 1000;

/// A column's samples so far.
struct Column {
    const Sample* first = nullptr;
    const Sample* lowest = nullptr;
    const Sample* highest = nullptr;
    const Sample* last = nullptr;

    void add(const Sample& sample) {
        if (first == nullptr)
            first = lowest = highest = &sample;
        if (sample.low < lowest->low)
            lowest = &sample;
        if (sample.high > highest->high)
            highest = &sample;
        last = &sample;
    }

    void flushInto(QVector<QPointF>& points) {
        if (first == nullptr)
            return;
        struct Kept {
            const Sample* sample;
            double value;
        };
        std::array<Kept, 4> kept{Kept{first, first->value}, Kept{lowest, lowest->low}, Kept{highest, highest->high},
                                 Kept{last, last->value}};
        if (lowest->time > highest->time)
            std::swap(kept[1], kept[2]);
        for (const Kept& one : kept) {
            const QPointF point(one.sample->time * Milliseconds, one.value);
            if (points.isEmpty() || points.constLast() != point)
                points += point;
        }
        *this = Column();
    }
};

auto firstNotBefore(const Samples& samples, double time) {
    return std::lower_bound(samples.begin(), samples.end(), time,
                            [](const Sample& sample, double wanted) { return sample.time < wanted; });
}

} // namespace

QVector<QPointF> thinned(const Samples& samples, double from, double to, int columns) {
    QVector<QPointF> points;
    if (samples.empty() || !(to > from) || columns < 1)
        return points;
    auto begin = firstNotBefore(samples, from);
    auto end = std::upper_bound(begin, samples.end(), to,
                                [](double wanted, const Sample& sample) { return wanted < sample.time; });
    begin -= begin == samples.begin() ? 0 : 1;
    end += end == samples.end() ? 0 : 1;
    const double columnsASecond = columns / (to - from);
    points.reserve(std::min(static_cast<int>(end - begin), 4 * (columns + 2)));
    Column column;
    double columnEnd = from; // of the column that is being filled; the sample before the range has one of its own
    for (auto sample = begin; sample != end; ++sample) {
        if (!sample->isNormal)
            continue;
        if (sample->time >= columnEnd) {
            column.flushInto(points);
            columnEnd = from + (std::floor((sample->time - from) * columnsASecond) + 1) / columnsASecond;
        }
        column.add(*sample);
    }
    column.flushInto(points);
    return points;
}

void Extent::add(double value) {
    const bool wasEmpty = isEmpty();
    low = wasEmpty ? value : std::min(low, value);
    high = wasEmpty ? value : std::max(high, value);
}

Extent extentOf(const Samples& samples, double from, double to) {
    Extent extent;
    for (auto sample = firstNotBefore(samples, from); sample != samples.end() && sample->time <= to; ++sample) {
        if (!sample->isNormal)
            continue;
        extent.add(sample->low);
        extent.add(sample->high);
    }
    return extent;
}

} // namespace corvanta::sensor
