#pragma once

#include "sensor/Samples.h"
#include "sensor/SensorData.h"

#include <array>
#include <chrono>
#include <optional>

namespace corvanta::sensor {

/// The samples of one input that a chart has, and which ones it needs next.
///
/// There are several levels: the samples themselves, and means with lowest and highest value of a minute, an hour, a
/// day. The span that is looked at decides which is shown. Of each level one unbroken stretch is kept; it grows page
/// by page towards what is looked at, or begins anew where that is far away.
class ChartTrack final {
public:
    explicit ChartTrack(int pid);

    int pid() const { return pid_; }

    /// The level for a view of so many seconds, and its span, s (0: each sample).
    static int levelFor(double span);
    static int stepOf(int level);

    const Samples& samples(int level) const { return levels_[static_cast<std::size_t>(level)].samples; }

    /// What is to be asked for so that the view is filled; nothing while an answer is awaited, or when all is there.
    std::optional<SampleQuery> wanted(double from, double to);
    /// Takes records under their query's key; false when they are not its own.
    bool onRecords(const QString& key, const Samples& records);
    void onFailed(const QString& key);
    /// A new value: it belongs to every level that reaches the present.
    void onLive(const Sample& sample);

    /// What is kept beyond the view: samples of the first level, the newest ones, and takes them back. The present
    /// moment is not reached by them any more.
    Samples newest(int most) const;
    void restore(const Samples& samples);
    /// A track over samples that are all there are.
    static ChartTrack fixed(int pid, const Samples& samples);

private:
    using Steady = std::chrono::steady_clock;
    struct Level {
        Samples samples;
        double from = 0; ///< what is loaded; nothing when it lies behind `to`
        double to = -1;
        bool reachesBegin = false;                  ///< there is nothing older
        bool isLive = false;                        ///< new values follow without a gap
        QString awaited;                            ///< key of the query that was sent
        bool isBackwards = false;                   ///< of that query
        std::optional<Steady::time_point> failedAt; ///< it is not tried again at once

        bool isEmpty() const { return from > to; }
    };
    SampleQuery query(Level& level, int number, const QVariant& begin, const QVariant& end) const;
    static void trim(Level& level);

    int pid_;
    std::array<Level, 4> levels_;
    bool isFixed_ = false;
};

} // namespace corvanta::sensor
