#include "playback/AxisScale.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta::playback {

namespace {

using std::chrono::microseconds;

constexpr double room = 0.02; ///< of the length, on each side

/// Seconds between two ticks.
constexpr std::array<int, 19> steps{1,   2,    5,    10,   15,    30,    60,    120,   300,      600,
                                    900, 1800, 3600, 7200, 10800, 21600, 43200, 86400, 7 * 86400};

Span limited(Moment begin, microseconds length) {
    return {begin, begin + std::clamp<microseconds>(length, AxisScale::Shortest, AxisScale::Longest)};
}

} // namespace

Span roomAround(Span span) {
    const microseconds length = span.end - span.begin;
    const auto extra = std::max<microseconds>(microseconds(std::llround(static_cast<double>(length.count()) * room)),
                                              (AxisScale::Shortest - length) / 2);
    return limited(span.begin - extra, length + 2 * extra);
}

AxisScale::AxisScale(Span view, int width)
    : view_(view)
    , width_(std::max(width, 1)) {}

double AxisScale::microsecondsAPixel() const {
    return static_cast<double>((view_.end - view_.begin).count()) / width_;
}

int AxisScale::xOf(Moment moment) const {
    constexpr double farOut = 1e6; // px; what lies outside is not to be told apart
    const double x = static_cast<double>((moment - view_.begin).count()) / microsecondsAPixel();
    return static_cast<int>(std::lround(std::clamp(x, -farOut, farOut)));
}

Moment AxisScale::momentAt(int x) const {
    return view_.begin + microseconds(std::llround(x * microsecondsAPixel()));
}

Span AxisScale::zoomed(double factor, int x) const {
    const double length = static_cast<double>((view_.end - view_.begin).count()) * factor;
    const Span sized = limited(view_.begin, microseconds(std::llround(std::clamp(length, 1e6, 1e17))));
    const double part = static_cast<double>(x) / width_;
    const auto before = microseconds(std::llround(static_cast<double>((sized.end - sized.begin).count()) * part));
    const Moment begin = momentAt(x) - before;
    return {begin, begin + (sized.end - sized.begin)};
}

Span AxisScale::showing(Moment moment) const {
    if (moment >= view_.begin && moment < view_.end)
        return view_;
    const microseconds length = view_.end - view_.begin;
    const Moment begin = moment - length / 4;
    return {begin, begin + length};
}

std::vector<AxisScale::Tick> AxisScale::ticks(int distance) const {
    const double least = distance * microsecondsAPixel() / 1e6;
    const auto found =
        std::find_if(steps.begin(), steps.end(), [least](int candidate) { return candidate >= least; });
    const qint64 step = found != steps.end() ? *found : static_cast<qint64>(std::ceil(least / 86400)) * 86400;
    // Counted from local midnight, so that round times stay round whatever the zone.
    const QDateTime first = toLocalTime(view_.begin);
    const qint64 offset = first.offsetFromUtc();
    const qint64 begin = std::chrono::floor<std::chrono::seconds>(view_.begin).count() + offset;
    std::vector<Tick> list;
    for (qint64 local = begin - (begin % step + step) % step;; local += step) {
        const Moment moment = std::chrono::seconds(local - offset);
        if (moment >= view_.end)
            return list;
        if (moment < view_.begin)
            continue;
        const QDateTime time = toLocalTime(moment);
        const bool midnight = time.time() == QTime(0, 0);
        list.push_back({moment,
                        time.toString(midnight    ? QStringLiteral("MM-dd")
                                      : step < 60 ? QStringLiteral("hh:mm:ss")
                                                  : QStringLiteral("hh:mm")),
                        midnight});
    }
}

} // namespace corvanta::playback
