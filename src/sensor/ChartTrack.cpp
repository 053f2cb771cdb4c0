#include "sensor/ChartTrack.h"

#include <QDateTime>

#include <algorithm>

namespace corvanta::sensor {
namespace {

struct LevelRule {
    int step;       ///< s
    double longest; ///< span of a view that still shows it, s
};
constexpr double Hour = 3600;
constexpr double Day = 24 * Hour;
constexpr std::array<LevelRule, 4> Rules{{{0, 2 * Hour}, {60, 2 * Day}, {3600, 120 * Day}, {86400, 1e12}}};
constexpr int PageSize = 5000;            // records
constexpr std::size_t MostKept = 1000000; // samples of a level
constexpr std::chrono::seconds AgainAfter{5};
constexpr double Nudge = 0.001; // s, the service's own precision

double now() {
    return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
}

} // namespace

ChartTrack::ChartTrack(int pid)
    : pid_(pid) {}

int ChartTrack::levelFor(double span) {
    int level = 0;
    while (level + 1 < static_cast<int>(Rules.size()) && span > Rules[static_cast<std::size_t>(level)].longest)
        ++level;
    return level;
}

int ChartTrack::stepOf(int level) {
    return Rules[static_cast<std::size_t>(level)].step;
}

SampleQuery ChartTrack::query(Level& level, int number, const QVariant& begin, const QVariant& end) const {
    SampleQuery query{pid_, begin, end, PageSize, stepOf(number)};
    level.awaited = query.key();
    level.isBackwards = !begin.isValid();
    return query;
}

std::optional<SampleQuery> ChartTrack::wanted(double from, double to) {
    const int number = levelFor(to - from);
    Level& level = levels_[static_cast<std::size_t>(number)];
    if (isFixed_ || !level.awaited.isEmpty() || (level.failedAt && Steady::now() - *level.failedAt < AgainAfter))
        return std::nullopt;
    const double span = to - from;
    const bool isFar = !level.isEmpty() && (to < level.from - span || from > level.to + span) &&
                       !(level.isLive && from > level.to) && !(level.reachesBegin && to < level.from);
    if (level.isEmpty() || isFar) {
        level = Level();
        if (to >= now() - span)
            return query(level, number, {}, QStringLiteral("latest"));
        return query(level, number, {}, to + span / 2);
    }
    if (from < level.from && !level.reachesBegin)
        return query(level, number, {}, level.from - Nudge);
    if (to > level.to && !level.isLive)
        return query(level, number, level.to + Nudge, {});
    return std::nullopt;
}

bool ChartTrack::onRecords(const QString& key, const Samples& records) {
    const auto found = std::find_if(levels_.begin(), levels_.end(),
                                    [&key](const Level& level) { return !key.isEmpty() && level.awaited == key; });
    if (found == levels_.end())
        return false;
    Level& level = *found;
    level.awaited.clear();
    const bool isLast = static_cast<int>(records.size()) < PageSize;
    const QString end = key.section(QLatin1Char('/'), 3, 3);
    if (level.isBackwards) {
        const bool isNewest = end == QLatin1String("latest");
        if (level.isEmpty())
            level.to = isNewest ? now() : end.toDouble();
        level.isLive = level.isLive || isNewest;
        level.reachesBegin = isLast;
        level.from = records.empty() ? std::min(level.to, isNewest ? now() : end.toDouble()) : records.front().time;
    } else {
        level.isLive = isLast;
        level.to = isLast ? now() : records.back().time;
    }
    mergeInto(level.samples, records);
    return true;
}

void ChartTrack::onFailed(const QString& key) {
    for (Level& level : levels_) {
        if (!key.isEmpty() && level.awaited == key) {
            level.awaited.clear();
            level.failedAt = Steady::now();
        }
    }
}

void ChartTrack::onLive(const Sample& sample) {
    for (Level& level : levels_) {
        if (!level.isLive)
            continue;
        level.to = std::max(level.to, sample.time);
        const std::size_t number = static_cast<std::size_t>(&level - levels_.data());
        const int step = Rules[number].step;
        // A span that goes on keeps its record, which grows.
        if (step > 0 && !level.samples.empty() && sample.time < level.samples.back().time + step &&
            sample.time >= level.samples.back().time) {
            Sample& span = level.samples.back();
            span.low = std::min(span.low, sample.low);
            span.high = std::max(span.high, sample.high);
            continue;
        }
        mergeInto(level.samples, {sample});
        trim(level);
    }
}

void ChartTrack::trim(Level& level) {
    if (level.samples.size() <= MostKept)
        return;
    level.samples.erase(level.samples.begin(), level.samples.begin() + MostKept / 4);
    level.from = level.samples.front().time;
    level.reachesBegin = false;
}

Samples ChartTrack::newest(int most) const {
    const Level& level = levels_[0];
    if (!level.isLive)
        return {};
    const std::size_t count = std::min(level.samples.size(), static_cast<std::size_t>(most));
    return {level.samples.end() - static_cast<std::ptrdiff_t>(count), level.samples.end()};
}

void ChartTrack::restore(const Samples& samples) {
    if (samples.empty())
        return;
    Level& level = levels_[0];
    level = Level();
    level.samples = samples;
    level.from = samples.front().time;
    level.to = samples.back().time;
}

ChartTrack ChartTrack::fixed(int pid, const Samples& samples) {
    ChartTrack track(pid);
    track.isFixed_ = true;
    for (Level& level : track.levels_)
        level.samples = samples;
    return track;
}

} // namespace corvanta::sensor
